#include "ChildProcess.h"

namespace QcTest {

void InitTestProcess() {}

} // namespace QcTest
