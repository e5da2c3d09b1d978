#include "recorder/status_texts.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "app/text/numbers.h"

namespace recorder {

using platform::Text;

namespace {

// What the status codes mean to the user who entered the address (RFC 9110, section 15.5).
Text RefusalText(int status) {
  switch (status) {
    case 401:
      return u"Der Sender verlangt eine Anmeldung";
    case 403:
      return u"Der Sender verweigert den Zugriff";
    case 404:
    case 410:
      return u"Unter dieser Adresse gibt es keinen Sender";
    default:
      return u"Der Sender lehnt die Anfrage ab";
  }
}

Text WithCode(const Text& text, int status) { return text + u" (" + app::FormatNumber(status) + u")"; }

Text FaultText(const Status& status) {
  switch (status.fault) {
    case Fault::kNotHttp:
      return u"Nur Adressen mit http:// oder https:// lassen sich aufnehmen";
    case Fault::kUnreachable:
      return u"Der Sender ist nicht erreichbar";
    case Fault::kServerError:
      return WithCode(u"Der Sender meldet einen Fehler", status.answer_code);
    case Fault::kRefused:
      return WithCode(RefusalText(status.answer_code), status.answer_code);
    case Fault::kNoSound:
      return u"Die Adresse liefert keinen Radiostrom";
    case Fault::kLost:
      return u"Die Verbindung ist abgerissen";
    case Fault::kCannotWrite:
      return u"In den Ordner kann nicht geschrieben werden";
    case Fault::kDiskFull:
      return u"Der Datenträger nimmt nichts mehr auf, vermutlich ist er voll";
    case Fault::kNone:
      break;
  }
  return {};
}

}  // namespace

Text PhaseText(const Status& status) {
  switch (status.phase) {
    case Phase::kConnecting:
      return u"Verbinde ...";
    case Phase::kRecording:
      return u"Aufnahme läuft";
    case Phase::kWaiting:
      return FaultText(status) + u", neuer Versuch in " + app::FormatNumber(status.seconds_to_next_try) +
             u" s";
    case Phase::kEnded:
      return EndsRecording(status.fault) ? FaultText(status) : u"Aufnahme beendet";
    case Phase::kIdle:
      break;
  }
  return u"Bereit";
}

Text TimeText(std::int64_t seconds) {
  constexpr std::int64_t kMinute = 60;
  constexpr std::int64_t kHour = 60 * kMinute;
  return app::FormatNumber(seconds / kHour, 2) + u":" + app::FormatNumber(seconds % kHour / kMinute, 2) +
         u":" + app::FormatNumber(seconds % kMinute, 2);
}

Text BytesText(std::uint64_t bytes) {
  constexpr std::uint64_t kStep = 1000;
  constexpr std::array<platform::TextView, 3> kUnits = {u" KB", u" MB", u" GB"};
  if (bytes < kStep) return app::FormatNumber(static_cast<std::int64_t>(bytes)) + u" Byte";
  std::size_t unit = 0;
  std::uint64_t tenths = bytes / (kStep / 10);
  for (; tenths >= kStep * 10 && unit + 1 < kUnits.size(); ++unit) tenths /= kStep;
  return app::FormatNumber(static_cast<std::int64_t>(tenths / 10)) + u"," +
         app::FormatNumber(static_cast<std::int64_t>(tenths % 10)) + Text(kUnits[unit]);
}

Text FilesText(std::uint64_t files) {
  return app::FormatNumber(static_cast<std::int64_t>(files)) + (files == 1 ? u" Datei" : u" Dateien");
}

Text OneLine(Text text) {
  const auto is_control = [](char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F); };
  std::replace_if(text.begin(), text.end(), is_control, u' ');
  return text;
}

}  // namespace recorder
