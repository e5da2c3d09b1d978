#include "platform/posix/shell.h"

#include <algorithm>
#include <array>
#include <exception>
#include <string_view>

#include "platform/posix/native_paths.h"

namespace platform::posix {
namespace {

constexpr std::string_view kExe = ".exe";

struct Mixer {
  const char* program;
  const char* argument;  ///< nullptr: none
};

/// In the order in which they are looked for: the mixers proper, then the desktops' sound settings.
constexpr std::array<Mixer, 9> kMixers = {{{"pavucontrol", nullptr},
                                           {"pavucontrol-qt", nullptr},
                                           {"kcmshell6", "kcm_pulseaudio"},
                                           {"kcmshell5", "kcm_pulseaudio"},
                                           {"gnome-control-center", "sound"},
                                           {"cinnamon-settings", "sound"},
                                           {"mate-volume-control", nullptr},
                                           {"unity-control-center", "sound"},
                                           {"xfce4-mixer", nullptr}}};

char Lower(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool EqualWithoutCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char one, char other) { return Lower(one) == Lower(other); });
}

bool EndsWithExe(std::string_view name) {
  return name.size() > kExe.size() && EqualWithoutCase(name.substr(name.size() - kExe.size()), kExe);
}

/// A scheme by RFC 3986, followed by "://".
bool IsAddress(TextView file) {
  const auto is_letter = [](char16_t unit) { return (unit | 0x20) >= u'a' && (unit | 0x20) <= u'z'; };
  const auto in_scheme = [&](char16_t unit) {
    return is_letter(unit) || (unit >= u'0' && unit <= u'9') || unit == u'+' || unit == u'-' || unit == u'.';
  };
  const auto end = file.find(u"://");
  if (end == TextView::npos || end == 0 || !is_letter(file.front())) return false;
  return std::all_of(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(end), in_scheme);
}

std::optional<Launch> PlanMixer() {
  for (const Mixer& mixer : kMixers) {
    const auto program = FindInPath(mixer.program);
    if (!program) continue;
    Launch launch{*program, {}, {}};
    if (mixer.argument != nullptr) launch.arguments.emplace_back(mixer.argument);
    return launch;
  }
  return std::nullopt;
}

std::optional<std::string> FindProgram(const std::string& name) {
  if (name.find('/') == std::string::npos) return FindInPath(name);
  return IsExecutableFile(name) ? std::optional(name) : std::nullopt;
}

}  // namespace

PosixShell::PosixShell(NativePaths& paths) : paths_(paths) {}

bool PosixShell::ShellExecuteW(std::uint32_t /*owner*/, const Text& verb, const Text& file,
                               const Text& parameters, const Text& folder, std::int32_t /*show*/) {
  if (!verb.empty() && verb != u"open") return false;
  try {
    std::optional<Launch> launch = Plan(file, parameters);
    if (!launch) return false;
    launch->folder = paths_.ToNative(folder);
    return StartProcess(*launch);
  } catch (const std::exception&) {
    return false;
  }
}

std::optional<Launch> PosixShell::Plan(const Text& file, const Text& parameters) {
  if (IsAddress(file)) {
    const auto opener = FindInPath("xdg-open");
    if (!opener) return std::nullopt;
    return Launch{*opener, {ToArgument(file)}, {}};
  }
  const std::string name = paths_.ToNative(file);
  if (!IsUsablePath(name)) return std::nullopt;
  if (EqualWithoutCase(name, "sndvol.exe")) return PlanMixer();
  auto program = FindProgram(name);
  if (!program && EndsWithExe(name)) program = FindProgram(name.substr(0, name.size() - kExe.size()));
  if (!program) return std::nullopt;
  Launch launch{*program, {}, {}};
  if (!parameters.empty()) launch.arguments.push_back(ToArgument(parameters));
  return launch;
}

/// A "\" in an argument is not a separator and stays as it is. An argument ends at a NUL.
std::string PosixShell::ToArgument(const Text& text) {
  std::string argument;
  for (TextView rest = TextView(text).substr(0, text.find(u'\0')); !rest.empty();) {
    const auto backslash = std::min(rest.find(u'\\'), rest.size());
    argument += paths_.ToNative(Text(rest.substr(0, backslash)));
    if (backslash < rest.size()) argument.push_back('\\');
    rest.remove_prefix(std::min(backslash + 1, rest.size()));
  }
  return argument;
}

}  // namespace platform::posix
