#include "recorder/station_recording.h"

#include <algorithm>
#include <utility>

#include "app/state/scoped_flag.h"
#include "app/text/text_helpers.h"
#include "recorder/music_folder.h"
#include "recorder/station_address.h"
#include "stream/stream_address.h"

namespace recorder {

using platform::Text;

namespace {

constexpr bool IsClientError(int status) { return status >= 400 && status < 500; }

// The server blames the moment and not the address.
constexpr bool IsForNowOnly(int status) {
  constexpr int kRequestTimeout = 408;
  constexpr int kTooEarly = 425;
  constexpr int kTooManyRequests = 429;
  return status == kRequestTimeout || status == kTooEarly || status == kTooManyRequests;
}

constexpr bool IsRefusal(Fault fault) { return fault == Fault::kRefused || fault == Fault::kNoSound; }

// Trying again after a failed write would only scatter empty files.
constexpr bool EndsAtOnce(Fault fault) {
  return fault == Fault::kNotHttp || fault == Fault::kCannotWrite || fault == Fault::kDiskFull;
}

}  // namespace

bool EndsRecording(Fault fault) { return EndsAtOnce(fault) || IsRefusal(fault); }

StationRecording::StationRecording(const Ports& ports, Text folder)
    : StationRecording(ports, std::move(folder), Limits{}) {}

StationRecording::StationRecording(const Ports& ports, Text folder, Limits limits)
    : ports_(ports),
      folder_(std::move(folder)),
      limits_(limits),
      internet_(ports.stream.internet, [this](const platform::InternetRead& read) { OnRead(read); }) {}

void StationRecording::Run(const Text& link) {
  const Text address(app::TrimControls(link));
  if (running_ || address.empty()) return;
  {
    const app::ScopedFlag running(running_);
    status_ = {};
    kept_files_.emplace(ports_.stream.record_files, ports_.files);
    RecordUntilStopped(address, runs_.Begin());
  }
  status_.phase = Phase::kEnded;
  Report();
}

void StationRecording::RecordUntilStopped(const Text& link, const app::Runs::Run& run) {
  int pause = 1;
  int refusals = 0;
  while (run.Wanted()) {
    status_.fault = RecordOnce(link, run);
    if (!run.Wanted() || connection_.complete) return;
    refusals = IsRefusal(status_.fault) ? refusals + 1 : 0;
    if (IsFinal(status_.fault, refusals)) return;
    // A server that closes again and again after its first burst must not be flooded with requests.
    if (connection_.BroughtBytesFor(limits_.steady)) pause = 1;
    Pause(pause, run);
    pause = std::min(pause * 2, limits_.longest_pause);
  }
  status_.fault = Fault::kNone;
}

bool StationRecording::IsFinal(Fault fault, int refusals) const {
  if (EndsAtOnce(fault) || refusals >= limits_.refusals) return true;
  return fault == Fault::kRefused && kept_files_->Bytes() == 0;
}

void StationRecording::Stop() {
  runs_.Interrupt();
  StopClient();
}

void StationRecording::StopClient() {
  if (connection_.client) connection_.client->StopRecStream();
}

Fault StationRecording::RecordOnce(const Text& link, const app::Runs::Run& run) {
  connection_ = {};
  status_.phase = Phase::kConnecting;
  status_.title.clear();
  if (status_.station.empty()) status_.station = link;
  Report();
  const stream::Ports& system = ports_.stream;
  stream::clsFunkhaus::Options options;
  options.record_folder = folder_;
  options.patience = stream::Patience::kOfARecording;
  // Each connection has a client of its own, which knows no headers of an earlier one.
  stream::clsFunkhaus client({internet_, system.xml_http_requests, *kept_files_, system.environment,
                              system.clock, system.message_loop, system.text_conversion},
                             options);
  const Text address = AddressOf(client, ports_.files, system.text_conversion, link);
  return run.Wanted() ? RecordStream(client, address, run) : Fault::kNone;
}

Fault StationRecording::RecordStream(stream::clsFunkhaus& client, const Text& address,
                                     const app::Runs::Run& run) {
  if (!stream::OpenFlagsOf(address)) return Fault::kNotHttp;
  bool answered = false;
  client.QueryStream = [&answered](bool bQueryOk) { answered = bQueryOk; };
  internet_.ForgetAnswer();
  client.StreamUrl(address);
  if (!answered) return FaultOfAnswer();
  const StreamFacts facts = FactsOf(client, ports_.stream.text_conversion);
  if (!facts.is_sound) return Fault::kNoSound;
  if (!facts.station.empty()) status_.station = facts.station;
  if (!MakeFolder(ports_.files, folder_)) return Fault::kCannotWrite;
  Record(client, address, facts);
  if (kept_files_->GetFailure() == KeptFiles::Failure::kNotMade) return Fault::kCannotWrite;
  if (kept_files_->GetFailure() == KeptFiles::Failure::kNotWritten) return Fault::kDiskFull;
  connection_.complete = connection_.closed_by_server && connection_.brought_bytes && facts.is_file;
  if (!run.Wanted() || connection_.complete) return Fault::kNone;
  return connection_.brought_bytes ? Fault::kLost : FaultOfAnswer();
}

void StationRecording::Record(stream::clsFunkhaus& client, const Text& address, const StreamFacts& facts) {
  stream::RecordOptions options;
  options.writes = stream::RecordOptions::Writes::kReceived;
  options.title_characters = stream::RecordOptions::TitleCharacters::kDecoded;
  options.untitled_name = facts.station.empty() ? HostOf(address) : facts.station;
  client.SetRecordOptions(options);
  client.RecStreamCurrentPlaying = [this](const Text& sStreamTitle, const Text&, const Text& sRaw) {
    const bool is_untitled = sStreamTitle == u"unknown" && sRaw.empty();
    status_.title = is_untitled ? Text() : sStreamTitle;
    Report();
  };
  connection_.opened_at = ports_.stream.clock.WholeSeconds();
  connection_.last_bytes_at = connection_.opened_at;
  connection_.client = &client;
  client.StartRecStream(facts.content_type, facts.metaint);
  connection_.client = nullptr;
  kept_files_->EndConnection();
}

Fault StationRecording::FaultOfAnswer() {
  constexpr int kNoAnswer = 0;
  constexpr int kOk = 200;
  status_.answer_code = internet_.AnswerStatus();
  if (status_.answer_code == kNoAnswer || status_.answer_code == kOk) return Fault::kUnreachable;
  const bool refused = IsClientError(status_.answer_code) && !IsForNowOnly(status_.answer_code);
  return refused ? Fault::kRefused : Fault::kServerError;
}

void StationRecording::Pause(int seconds, const app::Runs::Run& run) {
  constexpr std::uint32_t kSlice = 50;
  constexpr int kSlicesPerSecond = 20;
  status_.phase = Phase::kWaiting;
  for (int left = seconds * kSlicesPerSecond; left > 0 && run.Wanted(); --left) {
    status_.seconds_to_next_try = (left + kSlicesPerSecond - 1) / kSlicesPerSecond;
    Report();
    ports_.stream.message_loop.Sleep(kSlice);
    ports_.stream.message_loop.ProcessPendingMessages();
  }
}

void StationRecording::OnRead(const platform::InternetRead& read) {
  const std::int64_t now = ports_.stream.clock.WholeSeconds();
  const std::int64_t since = now - connection_.last_bytes_at;
  if (read.ok && read.count > 0) {
    connection_.brought_bytes = true;
    status_.phase = Phase::kRecording;
    status_.fault = Fault::kNone;
    if (since > 0 && since <= limits_.silence) status_.seconds += since;
    connection_.last_bytes_at = now;
  } else if (read.ended || !read.ok || since >= limits_.silence) {
    connection_.closed_by_server = read.ended && read.ok;
    StopClient();
  } else if (since < 0) {
    connection_.last_bytes_at = now;  // The clock was set back.
  }
  Report();
}

void StationRecording::Report() {
  status_.bytes = kept_files_->Bytes();
  status_.files = kept_files_->Files();
  Changed.Raise();
}

}  // namespace recorder
