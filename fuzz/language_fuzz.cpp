// Feeds arbitrary language files to the look-up of texts, through the INI engine, and translates the window
// with them. What must hold: every text is one line of at most 799 characters and never lost, a text that the
// file does not have stays German, all the window's texts follow the look-up, the same file gives the same
// texts, and looking up writes nothing.

#include "app/forms/form1.h"
#include "app/forms/translation.h"
#include "app/settings/language.h"
#include "app/state/status_sentences.h"
#include "fuzz/fuzz_input.h"
#include "platform/icu/text_conversion.h"
#include "platform/ini/ini_document.h"
#include "platform/ini/private_profile.h"
#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"

namespace {

using fuzz::Require;
using platform::Text;

class OneFile final : public platform::ProfileFiles {
 public:
  explicit OneFile(std::string bytes) : bytes_(std::move(bytes)) {}
  std::pair<platform::ProfileReading, platform::FileStamp> Stamp(const std::string& /*name*/) override {
    return {platform::ProfileReading::kRead, {}};
  }
  platform::ProfileBytes Read(const std::string& /*name*/, std::size_t /*limit*/) override {
    return {platform::ProfileReading::kRead, bytes_, {}};
  }
  std::optional<platform::FileState> Replace(const std::string& /*name*/,
                                             std::string_view /*bytes*/) override {
    Require(false);
    return std::nullopt;
  }
  platform::ProfileLocking Lock(const std::string& /*name*/) override {
    Require(false);
    return {};
  }
  void Unlock(platform::ProfileLock /*lock*/) override {}

 private:
  std::string bytes_;
};

class AsciiPaths final : public platform::NativePaths {
 public:
  Text FromNative(const std::string& native) override { return {native.begin(), native.end()}; }
  std::string ToNative(const Text& path) override {
    std::string native;
    for (const char16_t unit : path) native += static_cast<char>(unit);
    return native;
  }
  std::string ToNativeForReading(const Text& path) override { return ToNative(path); }
};

struct Rig {
  explicit Rig(std::string_view file) : disk(std::string(file)) { settings.LanguageName = u"Fuzz"; }
  AsciiPaths paths;
  OneFile disk;
  platform::icu::IcuTextConversion conversion;
  platform::ini::IniPrivateProfile profile{paths, disk, conversion};
  app::Settings settings;
  test_support::MemoryFiles files;
  test_support::FakeEnvironment environment;
  app::IniProcedures ini{settings, profile, files, environment};
  app::Language language{settings, ini, profile, files, environment};
};

void CheckText(const Rig& rig, platform::ini::IniDocument& document, const Text& german) {
  constexpr std::size_t kLongest = 799;
  const Text shown = rig.language.GetLangText(german, german);
  Require(shown == rig.language.GetLangText(german, german));
  Require(shown.find_first_of(u"\r\n") == Text::npos);
  Require(german.empty() || !shown.empty());
  const auto written = document.Value(u"Common", german);
  if (!written || written->empty()) return Require(shown == german);
  Require(shown.size() <= kLongest || shown == german);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view file = fuzz::AsBytes(data, size);
  Rig rig(file);
  platform::ini::IniDocument document(rig.conversion, std::string(file));
  for (const app::TextView sentence : app::sentences::kAll) CheckText(rig, document, Text(sentence));

  static app::Form1 german;
  app::Form1 translated;
  app::TranslateForm(translated, [&](const Text& text) { return rig.language.GetLangText(text, text); });
  Require(german.inventory.size() == translated.inventory.size());
  for (std::size_t at = 0; at < german.inventory.size(); ++at) {
    const auto* before = app::As<controls::Captioned>(german.inventory[at]);
    const auto* after = app::As<controls::Captioned>(translated.inventory[at]);
    Require((before == nullptr) == (after == nullptr));
    if (before == nullptr) continue;
    const Text& caption = before->Caption();
    CheckText(rig, document, caption);
    Require(caption.empty() ? after->Caption().empty()
                            : after->Caption() == rig.language.GetLangText(caption, caption));
  }
  return 0;
}
