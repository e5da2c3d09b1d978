#include "app/settings/language.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace app {
namespace {

constexpr char16_t kDefaultLanguage[] = u"default";
constexpr std::size_t kLongestText = 800;

}  // namespace

Language::Language(Settings& settings, const IniProcedures& ini, platform::PrivateProfile& profile,
                   platform::Files& files, platform::Environment& environment)
    : settings_(settings), ini_(ini), profile_(profile), files_(files), environment_(environment) {}

void Language::ChooseLanguage() {
  settings_.LanguageName = ini_.ReadIni(u"Pfad1", u"Languages", u"", kOptIni);
  if (!files_.PathFileExistsW(LanguageFile())) settings_.LanguageName = kDefaultLanguage;
}

bool Language::Translates() const {
  return !settings_.LanguageName.empty() && settings_.LanguageName != kDefaultLanguage;
}

Text Language::GetLangText(const Text& Key, const Text& Default) const {
  const Text& fallback = Default.empty() ? Key : Default;
  if (!Translates()) return fallback;
  std::array<char16_t, kLongestText> buffer{};
  const std::size_t count = profile_.GetPrivateProfileStringW(u"Common", Key, u"", buffer, LanguageFile());
  if (count == 0) return fallback;
  return {buffer.data(), std::min(count, buffer.size())};
}

Text Language::LanguageFile() const {
  return environment_.ProgramFolder() + u"\\Languages\\" + settings_.LanguageName + u".lng";
}

}  // namespace app
