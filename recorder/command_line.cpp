#include "recorder/command_line.h"

namespace recorder {

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
  const std::size_t first = link.find_first_not_of(' ');
  if (first == std::string::npos) return {CommandLine::Wish::kRecord, {}, form};
  link = link.substr(first, link.find_last_not_of(' ') - first + 1);
  if (link == "--help" || link == "-h") return {CommandLine::Wish::kHelp, {}, form};
  if (link.starts_with('-')) return {CommandLine::Wish::kWrongUse, {}, form};
  return {CommandLine::Wish::kRecord, link, form};
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
