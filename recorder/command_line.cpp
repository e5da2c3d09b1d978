#include "recorder/command_line.h"

namespace recorder {

CommandLine ReadCommandLine(std::span<const char* const> words) {
  std::string link;
  for (const std::string_view word : words) {
    if (!link.empty()) link += ' ';
    link += word;
  }
  const std::size_t first = link.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  link = link.substr(first, link.find_last_not_of(' ') - first + 1);
  if (link == "--help" || link == "-h") return {CommandLine::Wish::kHelp, {}};
  if (link.starts_with('-')) return {CommandLine::Wish::kWrongUse, {}};
  return {CommandLine::Wish::kRecord, link};
}

std::string_view Usage() {
  return "Aufruf: OZRecordFunkhaus [ADRESSE]\n"
         "\n"
         "Nimmt einen Sender auf, eine Datei je Titel, in den Ordner \"Funkhausplayer\" des Musikordners.\n"
         "ADRESSE ist die eines Senders oder einer Playlist; ohne sie wird danach gefragt.\n"
         "Ohne Bildschirm läuft die Aufnahme auf dem Terminal, bis Strg+C sie beendet.\n"
         "\n"
         "  -h, --help   zeigt diese Hilfe\n";
}

}  // namespace recorder
