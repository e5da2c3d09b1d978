// Feeds arbitrary bytes to the parts of the HTTP adapter that need no connection: the header's lines, the
// decision whether an answer is live, the text of a body, the address of a request. The piece before the
// first byte 0x1E is the header, the one after it the body, the third the address, the fourth a reference to
// be resolved there. What must hold: a header
// block is bounded and made of whole lines, its status is three digits or nothing and only an ended block is
// final; a value is part of one line; a body gives text in proportion to its bytes; an address that is
// requested is http or https, ASCII behind its host, and has no blank or control character.

#include "fuzz/fuzz_input.h"
#include "platform/curl/charsets.h"
#include "platform/http/address.h"
#include "platform/http/answer_header.h"
#include "platform/http/body_text.h"
#include "platform/http/live_answer.h"
#include "platform/icu/text_conversion.h"

namespace {

using fuzz::Require;
using platform::http::AnswerHeader;

void CheckHeader(const AnswerHeader& header) {
  const std::string& status = header.StatusCode();
  Require(status.empty() || status.size() == 3);
  Require(status.find_first_not_of("0123456789") == std::string::npos);
  Require(header.Block().empty() || header.Block().ends_with("\r\n"));
  Require(!header.IsFinal() || header.Block().ends_with("\r\n\r\n") || header.Block() == "\r\n");
  for (const char* name : {"Location", "Content-Type", "", "icy-name"}) {
    const std::string value = header.Value(name);
    Require(value.find_first_of("\n") == std::string::npos);
    Require(header.Block().find(value) != std::string::npos);
  }
  if (platform::http::IsLiveAnswer(header)) Require(!header.HasNameBeginning("content-length:"));
}

AnswerHeader HeaderOf(std::string_view bytes) {
  AnswerHeader header;
  for (const std::string_view line : fuzz::Pieces(bytes, '\n')) {
    if (!header.AddLine(std::string(line) + "\n")) break;
    Require(header.Block().size() <= AnswerHeader::kLimit);
    CheckHeader(header);
  }
  return header;
}

void CheckAddress(platform::TextConversion& conversion, std::string_view bytes) {
  const platform::Text url = fuzz::AsText(bytes);
  const auto address = platform::http::RequestAddress(conversion, url);
  if (!address) return;
  const std::size_t scheme = address->find("://");
  Require(scheme == 4 || scheme == 5);
  const std::size_t host_end = std::min(address->find_first_of("/?#", scheme + 3), address->size());
  Require(host_end > scheme + 3);
  for (std::size_t at = 0; at < address->size(); ++at) {
    const auto byte = static_cast<unsigned char>((*address)[at]);
    Require(byte > 0x20 && byte != 0x7F && (byte < 0x80 || at < host_end));
  }
  // A request's own address is one that stays as it is.
  const platform::Text again = conversion.MultiByteToWideChar(platform::CodePage::kUtf8, *address);
  Require(platform::http::RequestAddress(conversion, again) == address);
  const auto parts = platform::http::PartsOf(*address);
  if (!parts) return;
  Require(!parts->host.empty() && parts->port != 0 && parts->target.starts_with('/'));
  Require(parts->target.find('#') == std::string::npos);
}

void CheckReference(platform::TextConversion& conversion, std::string_view address,
                    std::string_view reference) {
  const auto base = platform::http::RequestAddress(address);
  if (!base) return;
  const auto resolved = platform::http::ResolveReference(*base, reference);
  if (!resolved) return;
  Require(resolved->size() <= base->size() + 3 * reference.size() + 2);
  CheckAddress(conversion, *resolved);
  Require(platform::http::RequestAddress(*resolved) == resolved);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::string_view> pieces = fuzz::Pieces(fuzz::AsBytes(data, size), '\x1E');
  platform::icu::IcuTextConversion conversion;
  const AnswerHeader header = HeaderOf(pieces[0]);
  const std::string_view body = pieces.size() > 1 ? pieces[1] : std::string_view();
  const platform::Text text = platform::http::DecodeBody(conversion, platform::curl::DecodeCharset, body,
                                                         header.Value("Content-Type"));
  // Some character sets have bytes that stand for two characters.
  Require(text.size() <= 2 * body.size() + 1);
  if (pieces.size() > 2) CheckAddress(conversion, pieces[2]);
  if (pieces.size() > 3) CheckReference(conversion, pieces[2], pieces[3]);
  return 0;
}
