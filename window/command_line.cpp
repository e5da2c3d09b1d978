#include "window/command_line.h"

#include <algorithm>
#include <cstddef>

namespace window {
namespace {

using Wish = CommandLine::Wish;

CommandLine WrongUse(std::string problem) { return {Wish::kWrongUse, {}, std::move(problem)}; }

/// The beginning of a word, in which nothing controls the terminal that it is printed on: control characters
/// of ASCII and the bytes by which others are written in UTF-8 or in a code page become "?".
std::string Printable(std::string_view word) {
  constexpr std::size_t kLongest = 80;
  std::string printable(word.substr(0, kLongest));
  std::replace_if(
      printable.begin(), printable.end(), [](char byte) { return byte < ' ' || byte > '~'; }, '?');
  return printable;
}

/// An option's effect; kRun for a word that is not an option.
CommandLine Option(std::string_view word) {
  if (word == "--help" || word == "-h") return {Wish::kHelp, {}, {}};
  if (word == "--version") return {Wish::kVersion, {}, {}};
  if (word.size() > 1 && word.starts_with('-')) {
    return WrongUse("Die Option " + Printable(word) + " gibt es nicht.");
  }
  return {};
}

}  // namespace

CommandLine ReadCommandLine(std::span<const char* const> words) {
  CommandLine line;
  bool options_end = false;
  bool has_argument = false;
  for (std::size_t at = 0; at < words.size(); ++at) {
    const std::string_view word = words[at];
    if (!options_end && word == "-session") {
      ++at;
      continue;
    }
    if (!options_end && word == "--") {
      options_end = true;
      continue;
    }
    if (!options_end) {
      CommandLine option = Option(word);
      if (option.wish != Wish::kRun) return option;
    }
    if (has_argument) return WrongUse("Es kann nur eine Datei oder Adresse geöffnet werden.");
    if (word.size() > kLongestArgument) return WrongUse("Die Datei oder Adresse ist zu lang.");
    has_argument = true;
    line.argument = word;
  }
  return line;
}

std::string_view Usage() {
  return "Aufruf: funkhausplayer [DATEI | ADRESSE]\n"
         "\n"
         "Zeigt, verwaltet und spielt Radiosender.\n"
         "DATEI ist eine Senderliste (M3U, M3U8 oder PLS); ihre Sender kommen, noch nicht gespeichert, zur\n"
         "Liste. ADRESSE ist die eines Senders oder einer Playlist (http oder https) und beginnt einen "
         "neuen\n"
         "Eintrag. Läuft das Programm schon, wird beides dort geöffnet.\n"
         "\n"
         "  -h, --help   zeigt diese Hilfe\n"
         "  --version    zeigt die Version\n"
         "  --           was danach kommt, ist keine Option\n"
         "\n"
         "Der Rückgabewert ist 0, bei falschem Aufruf 2 und sonst 1, wenn das Programm nicht starten kann.\n";
}

}  // namespace window
