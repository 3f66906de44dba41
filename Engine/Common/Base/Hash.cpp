#include "Engine/Common/Base/Hash.h"

namespace Quillanor::Common {

cHashable::~cHashable() = default;

} // namespace Quillanor::Common
