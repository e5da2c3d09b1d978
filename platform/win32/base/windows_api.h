#pragma once
// The system's own declarations, without the macros that replace names of the ports; for source files, which
// include them here only. Not for headers; base/handles.h declares the handles that those need.

// The second needs the first.
// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

// Operations that the ports name without the letter of their character set.
#undef CreateService
#undef ReplaceFile
#undef GetObject
#undef ImageList_AddIcon
#undef Yield
// A name like any other.
#undef interface
#undef small
