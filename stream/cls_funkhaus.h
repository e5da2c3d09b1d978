#pragma once
// The stream client: a station's address, its remote playlist, its headers, its current title, recording.
// Not for playing, and not for showing anything.

#include <cstdint>
#include <functional>
#include <memory>

#include "stream/record_options.h"
#include "stream/stream_state.h"

namespace stream {

/// Everything runs on the user-interface thread, and nothing here throws. Most calls wait, and while they
/// wait the window may process its messages, so any other operation can run inside one, on the same object
/// too; each call keeps what it needs for itself.
///
/// The owner may destroy the object inside one of its calls (closing the window during a title fetch): the
/// call then ends within one slice of its wait (a reader or GetActiveMeta with the empty text, IsUrlPlaylist
/// with false, a recording with its file closed), and raises no more events. The ports must outlive the
/// running calls.
class clsFunkhaus {
 public:
  struct Options {
    /// Receives the recorded files; empty means the program folder.
    Text record_folder;
    /// Of header query, playlist query and title readers; the recorders' own patience is always long.
    Patience patience = Patience::kOfAWindow;
  };

  explicit clsFunkhaus(const Ports& ports);
  clsFunkhaus(const Ports& ports, Options options);
  ~clsFunkhaus();
  clsFunkhaus(const clsFunkhaus&) = delete;
  clsFunkhaus& operator=(const clsFunkhaus&) = delete;

  /// Stores the address without the blanks around it and asks the server for its headers at once, which ends
  /// with the event QueryStream. An empty `sUrl` changes nothing; one of blanks only is stored as the empty
  /// address, and no server is asked. The open flags of ReadStreamMetaData and ReadStreamMetaData2 keep their
  /// value for an address that is neither http nor https.
  ///
  /// The query takes 3 seconds at most, during which the window takes no input. An address that stays silent
  /// for so long (or fails after a wait, in whatever way) fails at once for the next 10 seconds, then 20, 40
  /// and 60, and the title readers with it; see stream/silent_addresses.h.
  void StreamUrl(const Text& sUrl);
  [[nodiscard]] Text StreamUrl() const;
  /// Why the latest header query failed, or would have failed had it been sent; kind kNone when it did not.
  [[nodiscard]] QueryFailure LastQueryFailure() const;
  /// The user wants this address: each query to it is sent once more, however silent it was. Not called for
  /// what the program asks on its own, such as polling.
  void TryAgain(const Text& sUrl, Wait wait);

  /// True when the answer at `sUrl` came within the deadline (at most one second) and is a playlist; the
  /// operations below then return its entries. False keeps the earlier playlist. StreamUrl is not touched. An
  /// address that counts as silent is not asked.
  bool IsUrlPlaylist(const Text& sUrl);
  /// The announced number of entries; 0 before any playlist and for an announcement that is not a number.
  [[nodiscard]] std::int32_t GetPlaylistNumberOfEntries() const;
  /// Entry `lEntryIndex` (from 0); both texts are empty outside the announced number. The title is found
  /// only when the playlist names it before the address.
  void GetPlaylistEntry(std::int32_t lEntryIndex, Text& sStreamUrl, Text& sStreamTitle) const;
  /// The playlist's lines (PLS, whatever the server sent), joined with CR LF.
  [[nodiscard]] Text GetPlaylistInfoRawCrLf() const;

  /// The values of one header of the last successful query; the index is that of stream::HeaderName.
  [[nodiscard]] Text GetStreamQueryInfo(std::int32_t eQueryData) const;
  /// All header lines of the last successful query, the status line first, joined with CR LF.
  [[nodiscard]] Text GetStreamQueryInfoRawCrLf() const;

  /// The title that the stream is sending, "TimeOut", or the empty text. `lMetaInt` is the value of
  /// icy-metaint. The rules of the three readers differ: see stream/metadata_readers.h.
  Text ReadStreamMetaData(std::int32_t lMetaInt);
  Text ReadStreamMetaData2(std::int32_t lMetaInt);
  Text GetActiveMeta(const Text& sContentType, std::int32_t lMetaInt);
  /// Clears the stop flag and runs GetActiveMeta for its waiting alone, when `sMetaInt` is a number.
  void StartGetInfoSong(const Text& sContentType, const Text& sMetaInt = {});

  /// How recordings that begin later differ from the recorders' usual rules.
  void SetRecordOptions(RecordOptions options);
  /// Clears the stop flag and records until it is set: by title when `sMetaInt` (the value of icy-metaint) is
  /// given, otherwise into one file. An interval that is not a number records nothing. See
  /// stream/recorders.h.
  void StartRecStream(const Text& sContentType, const Text& sMetaInt = {});
  /// Sets the stop flag: a running recording or GetActiveMeta ends after its current read.
  void StopRecStream();
  /// Clears the stop flag.
  void FreeRecStream();

  /// The header query has ended; `bQueryOk`: the header lines are those of the new address.
  std::function<void(bool bQueryOk)> QueryStream;
  /// The recording by title met a block that is not empty, or opened the file "unknown".
  std::function<void(const Text& sStreamTitle, const Text& sStreamUrl, const Text& sStreamMetaDataRaw)>
      RecStreamCurrentPlaying;

 private:
  struct Core;
  std::shared_ptr<Core> core_;
};

}  // namespace stream
