#pragma once
// What a complete title block contains, by the rules of the three readers and of the recorder.
// Not for finding blocks in a stream (stream/icy_demultiplexer.h).

#include <string>
#include <vector>

#include "stream/text_pieces.h"

namespace stream {

/// The block's bytes as characters of the same codes (0 to 255).
Text CharactersOfSameCode(const std::string& block);

/// A field of a block, in the order of the block.
struct BlockField {
  enum class Kind { kTitle, kWebAddress };
  Kind kind = Kind::kTitle;
  Text raw;    ///< what is between the first and the second "=" of its piece
  Text value;  ///< the same without apostrophes
};

/// The pieces of `block` between semicolons that name "StreamTitle" or, failing that, "StreamUrl" (any
/// case, anywhere in the piece). `block` is without line feeds.
std::vector<BlockField> FieldsOf(TextView block);

/// A reader's interpretation of a block.
struct BlockVerdict {
  bool ends_reading = false;
  Text title;
};

/// Each takes a whole block as text and removes its line feeds first.

/// ReadStreamMetaData: the text in apostrophes after "StreamTitle=", when it is longer than the position
/// (from 1) at which it starts; a shorter title is skipped.
BlockVerdict JudgeByLength(TextView block);

/// ReadStreamMetaData2: the first title field that has a value at all; any block that is not empty ends the
/// reading.
BlockVerdict JudgeFirstBlock(TextView block);

/// GetActiveMeta: the last title that is not empty; any block that is not empty ends the reading.
BlockVerdict JudgeAllFields(TextView block);

}  // namespace stream
