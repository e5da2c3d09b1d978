#pragma once
// The names of recorded files: extension by content type, and a safe file name for a title.
// Not for opening files, and not for the titles that are shown.

#include <cstddef>

#include "stream/text_pieces.h"

namespace stream {

/// ".mp3", ".m4a", ".ogg" by the content type (any case, compared whole), otherwise empty.
Text ExtensionOf(TextView sContentType);

/// The name of the file for a title: what a file name may not hold on Linux or Windows (path separators,
/// ":", "*", "?", quotes, "<", ">", "|", control characters, halves of surrogate pairs) becomes "_";
/// without an extension blanks and dots at the title's end are dropped; a rest that is empty becomes "_",
/// and a name that Windows keeps for a device gets a "_" at its end. The title is cut between two characters
/// so that title and extension together take at most `longest` bytes of UTF-8; the extension is always kept.
/// The result is never empty, ".", ".." or more than one level of a path.
Text RecordFileName(TextView title, TextView extension, std::size_t longest);

}  // namespace stream
