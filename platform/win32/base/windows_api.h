#pragma once
// The system's own declarations, without the macros that replace names of the ports; for source files, which
// include them here only. Not for headers; base/handles.h declares the handles that those need.

#include <windows.h>

// Operations that the ports name without the letter of their character set.
#undef CreateService
#undef ReplaceFile
#undef GetObject
#undef Yield
// A name like any other.
#undef interface
#undef small
