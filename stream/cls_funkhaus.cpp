#include "stream/cls_funkhaus.h"

#include <optional>
#include <utility>

#include "app/text/numbers.h"
#include "app/text/text_helpers.h"
#include "stream/header_lines.h"
#include "stream/header_query.h"
#include "stream/metadata_readers.h"
#include "stream/playlist_fetch.h"
#include "stream/playlist_text.h"
#include "stream/record_name.h"
#include "stream/recorders.h"
#include "stream/stream_address.h"

namespace stream {

// Every call that waits shares ownership of the core and touches nothing of `this` after its first wait.
struct clsFunkhaus::Core : StreamState {
  Core(const Ports& system, Options chosen, clsFunkhaus* object)
      : StreamState(system, chosen.patience), options(std::move(chosen)), owner(object) {}

  [[nodiscard]] Text RecordFolder() const {
    return options.record_folder.empty() ? ports.environment.ProgramFolder() : options.record_folder;
  }

  // After a failed query the earlier header lines remain.
  QueryFailure QueryHeaders(const Text& asked) {
    const auto attempt = silent_addresses.Begin(Question::kHeaders, asked);
    if (!attempt) return silent_addresses.FailureOf(asked);
    QueriedHeaders headers = QueryStreamHeaders(ports.internet, asked, attempt->milliseconds);
    const bool is_ok = headers.failure.kind == QueryFailure::Kind::kNone;
    if (is_ok) header_lines = std::move(headers.lines);
    if (is_ok || headers.failure.kind == QueryFailure::Kind::kHttpStatus) {
      silent_addresses.Answered(Question::kHeaders, asked);
    } else {
      silent_addresses.Failed(Question::kHeaders, asked, *attempt, headers.failure);
    }
    return headers.failure;
  }

  // A handler may replace itself or destroy the object, so a copy of it is run.
  void RaiseQueryStream(bool bQueryOk) const {
    if (!owner || !owner->QueryStream) return;
    const auto handler = owner->QueryStream;
    handler(bQueryOk);
  }

  void RaiseCurrentPlaying(const Text& sStreamTitle, const Text& sStreamUrl, const Text& sRaw) const {
    if (!owner || !owner->RecStreamCurrentPlaying) return;
    const auto handler = owner->RecStreamCurrentPlaying;
    handler(sStreamTitle, sStreamUrl, sRaw);
  }

  const Options options;
  RecordOptions recording;
  clsFunkhaus* owner;  ///< null once the object is gone
};

clsFunkhaus::clsFunkhaus(const Ports& ports) : clsFunkhaus(ports, Options{}) {}

clsFunkhaus::clsFunkhaus(const Ports& ports, Options options)
    : core_(std::make_shared<Core>(ports, std::move(options), this)) {}

clsFunkhaus::~clsFunkhaus() {
  core_->owner = nullptr;
  core_->stop_flag = true;
  core_->abort_flag = true;
}

void clsFunkhaus::StreamUrl(const Text& sUrl) {
  if (sUrl.empty()) return;
  const auto core = core_;
  core->address = app::Trim(sUrl);
  if (const auto flags = OpenFlagsOf(core->address)) core->open_flags = *flags;
  if (core->address.empty()) return;
  core->query_failure = core->QueryHeaders(Text(core->address));
  core->RaiseQueryStream(core->query_failure.kind == QueryFailure::Kind::kNone);
}

Text clsFunkhaus::StreamUrl() const { return core_->address; }

QueryFailure clsFunkhaus::LastQueryFailure() const { return core_->query_failure; }

void clsFunkhaus::TryAgain(const Text& sUrl, Wait wait) {
  core_->silent_addresses.TryAgain(app::Trim(sUrl), wait);
}

bool clsFunkhaus::IsUrlPlaylist(const Text& sUrl) {
  const Text address(app::Trim(sUrl));
  const auto core = core_;
  if (address.empty() || core->silent_addresses.IsSilent(address)) return false;
  const std::optional<Text> response = FetchPlaylistText(*core, address);
  if (!response || core->abort_flag) return false;
  auto lines = PlaylistLinesFromResponse(*response);
  if (!lines) return false;
  core->playlist_lines = std::move(*lines);
  return true;
}

std::int32_t clsFunkhaus::GetPlaylistNumberOfEntries() const {
  return AnnouncedEntries(core_->playlist_lines);
}

void clsFunkhaus::GetPlaylistEntry(std::int32_t lEntryIndex, Text& sStreamUrl, Text& sStreamTitle) const {
  PlaylistEntry entry = FindPlaylistEntry(core_->playlist_lines, lEntryIndex);
  sStreamUrl = std::move(entry.address);
  sStreamTitle = std::move(entry.title);
}

Text clsFunkhaus::GetPlaylistInfoRawCrLf() const { return app::Join(core_->playlist_lines, kCrLf); }

Text clsFunkhaus::GetStreamQueryInfo(std::int32_t eQueryData) const {
  return HeaderValues(core_->header_lines, eQueryData);
}

Text clsFunkhaus::GetStreamQueryInfoRawCrLf() const { return app::Join(core_->header_lines, kCrLf); }

Text clsFunkhaus::ReadStreamMetaData(std::int32_t lMetaInt) {
  const auto core = core_;
  return ReadLongTitle(*core, lMetaInt);
}

Text clsFunkhaus::ReadStreamMetaData2(std::int32_t lMetaInt) {
  const auto core = core_;
  return ReadFirstBlockTitle(*core, lMetaInt);
}

Text clsFunkhaus::GetActiveMeta(const Text& /*sContentType*/, std::int32_t lMetaInt) {
  const auto core = core_;
  return ReadActiveTitle(*core, lMetaInt);
}

void clsFunkhaus::StartGetInfoSong(const Text& sContentType, const Text& sMetaInt) {
  core_->stop_flag = false;
  if (const auto lMetaInt = app::ToInt32(sMetaInt)) GetActiveMeta(sContentType, *lMetaInt);
}

void clsFunkhaus::SetRecordOptions(RecordOptions options) { core_->recording = std::move(options); }

void clsFunkhaus::StartRecStream(const Text& sContentType, const Text& sMetaInt) {
  const auto core = core_;
  core->stop_flag = false;
  const Text folder = core->RecordFolder();
  const Text extension = ExtensionOf(sContentType);
  const RecordOptions recording = core->recording;
  if (sMetaInt.empty()) return RecordPlain(*core, folder, extension, recording);
  const std::optional<std::int32_t> lMetaInt = app::ToInt32(sMetaInt);
  if (!lMetaInt) return;
  RecordByTitle(
      *core, folder, extension, *lMetaInt,
      [core](const Text& sStreamTitle, const Text& sStreamUrl, const Text& sRaw) {
        core->RaiseCurrentPlaying(sStreamTitle, sStreamUrl, sRaw);
      },
      recording);
}

void clsFunkhaus::StopRecStream() { core_->stop_flag = true; }

void clsFunkhaus::FreeRecStream() { core_->stop_flag = false; }

}  // namespace stream
