#include "recorder/station_recording.h"

#include <algorithm>
#include <utility>

#include "app/text/text_helpers.h"
#include "recorder/music_folder.h"
#include "recorder/station_address.h"
#include "stream/stream_address.h"

namespace recorder {

using platform::Text;

namespace {

constexpr bool IsClientError(int status) { return status >= 400 && status < 500; }

// The server names the moment and not the address as its reason.
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
  running_ = true;
  stop_asked_ = false;
  status_ = {};
  kept_files_.emplace(ports_.stream.record_files, ports_.files);
  RecordUntilStopped(address);
  running_ = false;
  status_.phase = Phase::kEnded;
  Tell();
}

void StationRecording::RecordUntilStopped(const Text& link) {
  int pause = 1;
  int refusals = 0;
  while (!stop_asked_) {
    status_.fault = RecordOnce(link);
    if (stop_asked_ || complete_) return;
    refusals = IsRefusal(status_.fault) ? refusals + 1 : 0;
    if (IsFinal(status_.fault, refusals)) return;
    // A server that closes again and again after its first burst is not to be besieged.
    if (brought_bytes_ && last_bytes_at_ - opened_at_ >= limits_.steady) pause = 1;
    Pause(pause);
    pause = std::min(pause * 2, limits_.longest_pause);
  }
  status_.fault = Fault::kNone;
}

bool StationRecording::IsFinal(Fault fault, int refusals) const {
  if (EndsAtOnce(fault) || refusals >= limits_.refusals) return true;
  return fault == Fault::kRefused && kept_files_->Bytes() == 0;
}

void StationRecording::Stop() {
  stop_asked_ = true;
  if (client_) client_->StopRecStream();
}

Fault StationRecording::RecordOnce(const Text& link) {
  brought_bytes_ = false;
  closed_by_server_ = false;
  complete_ = false;
  status_.phase = Phase::kConnecting;
  status_.title.clear();
  if (status_.station.empty()) status_.station = link;
  Tell();
  const stream::Ports& system = ports_.stream;
  stream::clsFunkhaus::Options options;
  options.record_folder = folder_;
  options.patience = stream::Patience::kOfARecording;
  // Each connection has a client of its own, which knows no headers of an earlier one.
  stream::clsFunkhaus client({internet_, system.xml_http_requests, *kept_files_, system.environment,
                              system.clock, system.message_loop, system.text_conversion},
                             options);
  const Text address = AddressOf(client, ports_.files, system.text_conversion, link);
  return stop_asked_ ? Fault::kNone : RecordStream(client, address);
}

Fault StationRecording::RecordStream(stream::clsFunkhaus& client, const Text& address) {
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
  complete_ = closed_by_server_ && brought_bytes_ && facts.is_file;
  if (stop_asked_ || complete_) return Fault::kNone;
  return brought_bytes_ ? Fault::kLost : FaultOfAnswer();
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
    Tell();
  };
  opened_at_ = ports_.stream.clock.WholeSeconds();
  last_bytes_at_ = opened_at_;
  client_ = &client;
  client.StartRecStream(facts.content_type, facts.metaint);
  client_ = nullptr;
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

void StationRecording::Pause(int seconds) {
  constexpr std::uint32_t kSlice = 50;
  constexpr int kSlicesPerSecond = 20;
  status_.phase = Phase::kWaiting;
  for (int left = seconds * kSlicesPerSecond; left > 0 && !stop_asked_; --left) {
    status_.seconds_to_next_try = (left + kSlicesPerSecond - 1) / kSlicesPerSecond;
    Tell();
    ports_.stream.message_loop.Sleep(kSlice);
    ports_.stream.message_loop.ProcessPendingMessages();
  }
}

void StationRecording::OnRead(const platform::InternetRead& read) {
  if (!client_) return;
  const std::int64_t now = ports_.stream.clock.WholeSeconds();
  const std::int64_t since = now - last_bytes_at_;
  if (read.ok && read.count > 0) {
    brought_bytes_ = true;
    status_.phase = Phase::kRecording;
    status_.fault = Fault::kNone;
    if (since > 0 && since <= limits_.silence) status_.seconds += since;
    last_bytes_at_ = now;
  } else if (read.ended || !read.ok || since >= limits_.silence) {
    closed_by_server_ = read.ended && read.ok;
    client_->StopRecStream();
  } else if (since < 0) {
    last_bytes_at_ = now;  // The clock was set back.
  }
  Tell();
}

void StationRecording::Tell() {
  status_.bytes = kept_files_->Bytes();
  status_.files = kept_files_->Files();
  Changed.Raise();
}

}  // namespace recorder
