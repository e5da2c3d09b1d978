#pragma once
// What is sent with a request, as the library takes it. Not for answers.

#include <string>
#include <string_view>
#include <vector>

#include "ports/text.h"

namespace platform::win32 {

/// In UTF-8.
std::string Utf8(TextView text);

/// The header lines as bytes, each with its end, and what keeps the connection from being used again; with
/// the name and password of an address ("name:password", RFC 7617) unless they are empty.
std::string HeaderBytes(const std::vector<std::string>& lines, std::string_view user);

/// A host name in UTF-8 as name servers know it, in ASCII (RFC 5891); empty when no server can have that
/// name.
std::string HostName(std::string_view host);

}  // namespace platform::win32
