#pragma once
// What is sent with a request, as the library takes it. Not for answers.

#include <string>
#include <string_view>
#include <vector>

#include "ports/text.h"

namespace platform::win32 {

/// In UTF-8.
std::string Utf8(TextView text);

/// Bytes of code page 1252.
Text FromAnsi(std::string_view bytes);

/// The header lines, each with its end, and what keeps the connection from being used again; with the name
/// and password of an address ("name:password", RFC 7617) unless they are empty.
Text HeaderText(const std::vector<std::string>& lines, std::string_view user);

/// A host name in UTF-8 as name servers know it (RFC 5891).
Text HostName(std::string_view host);

}  // namespace platform::win32
