#pragma once
// The program's text as the system's operations take and give it: both are UTF-16, only the types differ.
// Not for code pages.

#include <cstddef>
#include <string_view>

#include "ports/text.h"

namespace platform::win32 {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

/// For reading, up to the first NUL; valid as long as `text`.
inline const wchar_t* Wide(const Text& text) { return reinterpret_cast<const wchar_t*>(text.c_str()); }

/// For operations that take a length; not ended by a NUL.
inline const wchar_t* WideData(TextView text) { return reinterpret_cast<const wchar_t*>(text.data()); }

/// For operations that write into a buffer of the program.
inline wchar_t* WideBuffer(char16_t* buffer) { return reinterpret_cast<wchar_t*>(buffer); }

inline Text FromWide(std::wstring_view units) { return {units.begin(), units.end()}; }

/// Up to the NUL; empty for null.
inline Text FromWide(const wchar_t* units) {
  return units == nullptr ? Text() : FromWide(std::wstring_view(units));
}

}  // namespace platform::win32
