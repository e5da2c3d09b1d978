#include "recorder/command_line.h"

#include <algorithm>

namespace recorder {

std::string TrimmedLink(std::string_view entered) {
  const auto is_dropped = [](char byte) {
    const auto code = static_cast<unsigned char>(byte);
    return code <= 0x20 || code == 0x7F;
  };
  const auto first = std::find_if_not(entered.begin(), entered.end(), is_dropped);
  const auto last = std::find_if_not(entered.rbegin(), entered.rend(), is_dropped).base();
  return first < last ? std::string(first, last) : std::string();
}

CommandLine ReadCommandLine(std::span<const char* const> words) {
  std::string link;
  auto form = CommandLine::Form::kWindowIfPossible;
  for (const std::string_view word : words) {
    if (word == "--terminal") {
      form = CommandLine::Form::kTerminal;
      continue;
    }
    if (!link.empty()) link += ' ';
    link += word;
  }
  link = TrimmedLink(link);
  if (link == "--help" || link == "-h") return {CommandLine::Wish::kHelp, {}, form};
  if (link.starts_with('-')) return {CommandLine::Wish::kWrongUse, {}, form};
  return {CommandLine::Wish::kRecord, link, form};
}

CommandLine ReadCommandTail(std::string_view tail) {
  std::string whole = TrimmedLink(tail);
  const bool is_quoted = whole.size() >= 2 && whole.front() == '"' && whole.find('"', 1) == whole.size() - 1;
  if (is_quoted) whole = whole.substr(1, whole.size() - 2);
  const char* const word = whole.c_str();
  return ReadCommandLine({&word, 1});
}

std::string_view Usage() {
  return "Aufruf: OZRecordFunkhaus [--terminal] [ADRESSE]\n"
         "\n"
         "Nimmt einen Sender auf, eine Datei je Titel, in den Ordner \"Funkhausplayer\" des Musikordners.\n"
         "ADRESSE ist die eines Senders oder einer Playlist; ohne sie wird danach gefragt.\n"
         "Ohne Bildschirm läuft die Aufnahme auf dem Terminal, bis Strg+C sie beendet.\n"
         "\n"
         "  --terminal   nimmt auch dort auf dem Terminal auf, wo es einen Bildschirm gibt\n"
         "  -h, --help   zeigt diese Hilfe\n"
         "\n"
         "Auf dem Terminal ist der Rückgabewert 0 nach einer Aufnahme, die beendet wurde, 1, wenn es unter "
         "der\n"
         "Adresse nichts aufzunehmen gibt oder nichts geschrieben werden kann, 2 bei falschem Aufruf.\n";
}

}  // namespace recorder
