#pragma once
// The media framework's own functions, found when they are first called: a Windows without its media
// components, as the "N" editions are, may lack the libraries, and a program that is linked to them would not
// start there. Where they are there all the same, MFStartup gives E_NOTIMPL. Not for the objects' operations.

#include <utility>

namespace platform::win32 {

/// Null when the system has no such library or function. Libraries are loaded once, from the system's folder.
void* MediaFunction(const char* name);

/// ERROR_MOD_NOT_FOUND as a result.
inline constexpr long kMissingMediaLibrary = static_cast<long>(0x8007007Eu);

/// Calls the function of that name: CallMedia<decltype(::MFCreateTopology)>("MFCreateTopology", &made).
/// kMissingMediaLibrary where there is none.
template <typename Function, typename... Given>
long CallMedia(const char* name, Given&&... given) {
  auto* const function = reinterpret_cast<Function*>(MediaFunction(name));
  return function == nullptr ? kMissingMediaLibrary : function(std::forward<Given>(given)...);
}

}  // namespace platform::win32
