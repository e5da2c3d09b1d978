#pragma once
// Languages for tests of translated windows: one that marks every text, and the program's own language files.
// Not for the choice of the language; tests of the settings have that.

#include <array>
#include <filesystem>
#include <optional>
#include <string>

#include "app/settings/ini_procedures.h"
#include "app/settings/language.h"
#include "platform/ini/private_profile.h"
#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"
#include "tests/support/memory_profile.h"
#include "tests/support/plain_disk.h"
#include "tests/support/plain_text_conversion.h"
#include "tests/support/program_folder.h"
#include "tests/support/temp_folder.h"

namespace test_support {

/// Translates every text to itself in angle brackets.
class MarkingLanguage {
 public:
  MarkingLanguage() { settings_.LanguageName = u"Marks"; }

 private:
  class Profile final : public MemoryProfile {
   public:
    std::uint32_t GetPrivateProfileStringW(const Text& section, const Text& key, const Text&,
                                           std::span<char16_t> buffer, const Text& path) override {
      Set(path, section, key, u"<" + key + u">");
      return MemoryProfile::GetPrivateProfileStringW(section, key, u"", buffer, path);
    }
  };

  app::Settings settings_;
  Profile profile_;
  MemoryFiles files_;
  FakeEnvironment environment_;
  app::IniProcedures ini_{settings_, profile_, files_, environment_};

 public:
  app::Language language{settings_, ini_, profile_, files_, environment_};
};

enum class LanguageEncoding { kAsItLies, kUtf16 };

/// A language file that the build put beside this test program, read by the INI engine; or a
/// copy of it in UTF-16LE with its mark.
class ProgramLanguage {
 public:
  explicit ProgramLanguage(const platform::Text& name,
                           LanguageEncoding encoding = LanguageEncoding::kAsItLies) {
    own_environment_.program_folder = ProgramFolder();
    const std::string file = "Languages/" + paths_.ToNative(name) + ".lng";
    if (encoding == LanguageEncoding::kUtf16) {
      const auto bytes = files_.ReadWholeFile(
          own_environment_.program_folder + u"/" + paths_.FromNative(file), std::size_t{1} << 20U);
      folder_.Write(file,
                    Utf16(conversion_.MultiByteToWideChar(platform::CodePage::kAnsi, bytes.value_or(""))));
      own_environment_.program_folder = folder_.TextPath();
    }
    path_ = own_environment_.program_folder + u"\\Languages\\" + name + u".lng";
    settings_.LanguageName = files_.PathFileExistsW(path_) ? name : platform::Text(u"default");
  }

  /// Whether the file has a translation for `text`, be it the same text.
  bool Knows(const platform::Text& text) {
    std::array<char16_t, 800> buffer{};
    return profile_.GetPrivateProfileStringW(u"Common", text, u"", buffer, path_) > 0;
  }
  platform::Text Translated(const platform::Text& text) { return language.GetLangText(text, text); }
  std::string Utf8(const platform::Text& text) {
    return conversion_.WideCharToMultiByte(platform::CodePage::kUtf8, text);
  }

 private:
  static std::string Utf16(const platform::Text& text) {
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : text) {
      bytes.push_back(static_cast<char>(unit & 0xFF));
      bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
  }

  TempFolder folder_;
  test_support::PlainNativePaths paths_;
  test_support::PlainTextConversion conversion_;
  test_support::PlainFiles files_;
  test_support::PlainProfileFiles profile_files_;
  platform::ini::IniPrivateProfile profile_{paths_, profile_files_, conversion_};
  FakeEnvironment own_environment_;
  platform::Text path_;
  app::Settings settings_;
  app::IniProcedures ini_{settings_, profile_, files_, own_environment_};

 public:
  app::Language language{settings_, ini_, profile_, files_, own_environment_};
};

}  // namespace test_support
