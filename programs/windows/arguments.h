#pragma once
// The words of the program's command line. Not their meaning.

#include <string>
#include <vector>

#include "ports/text.h"

/// Without the program's own name, in UTF-8.
[[nodiscard]] std::vector<std::string> Arguments();

/// What follows the program's own name, as it was given, in UTF-8.
[[nodiscard]] std::string CommandTail();

/// The same of any command line. A name may be in quotation marks, which count even inside it.
[[nodiscard]] platform::TextView TailOf(platform::TextView command_line);

/// An address as it is; a path, which may depend on the working folder, as a full one.
[[nodiscard]] platform::Text FullArgument(const std::string& argument);

/// A box with a text in UTF-8, for a program that has no console.
void ShowText(const platform::Text& title, const std::string& text);
