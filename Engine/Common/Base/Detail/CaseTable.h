// The generated case tables (CaseTable.cpp, made by tools/gen_case_table.py).
#pragma once

namespace Quillanor::Common::Detail {

// Two-level delta tables: the mapping of code unit c is
// c + Pages[Index[c >> 8]][c & 0xFF] (modulo 2^16).
extern const unsigned char kUpperIndex[256];
extern const unsigned short kUpperPages[][256];
extern const unsigned char kLowerIndex[256];
extern const unsigned short kLowerPages[][256];

} // namespace Quillanor::Common::Detail
