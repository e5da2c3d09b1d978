#include "ui/playing_mark.h"

#include <algorithm>
#include <span>
#include <utility>

#include "app/state/station.h"

namespace ui {

using controls::ListView;
using controls::RowId;
using controls::RowMark;
using platform::PlaybackState;

namespace {

RowMark MarkOf(PlaybackState state) {
  switch (state) {
    case PlaybackState::kPlaying:
      return RowMark::kPlaying;
    case PlaybackState::kConnecting:
    case PlaybackState::kBuffering:
    case PlaybackState::kPaused:
    case PlaybackState::kReconnecting:
    case PlaybackState::kNoDevice:
      return RowMark::kWaiting;
    case PlaybackState::kStopped:
    case PlaybackState::kEnded:
    case PlaybackState::kFailed:
      break;
  }
  return RowMark::kNone;
}

}  // namespace

FollowedStation::Station FollowedStation::StationOf(const controls::ListRow& row) {
  return {row.cells[app::kNameCell], row.cells[app::kLinkCell]};
}

void FollowedStation::Take(const ListView& list, RowId row) {
  const auto position = list.IndexOf(row);
  if (!position) return;
  known_ = true;
  station_ = StationOf(list.Rows()[*position]);
  for (Place& place : places_) {
    if (place.list == &list) {
      place.row = row;
      place.seen = station_;
    } else {
      Search(place, 0, place.list->Count());
    }
  }
}

void FollowedStation::Search(Place& place, std::size_t first, std::size_t count) const {
  const auto& rows = place.list->Rows();
  const std::size_t begin = std::min(first, rows.size());
  const auto searched = std::span(rows).subspan(begin, std::min(count, rows.size() - begin));
  const auto found = std::ranges::find(searched, station_, StationOf);
  place.row = found == searched.end() ? RowId::kNone : found->id;
  place.seen = station_;
}

void FollowedStation::TakeNewRows(const ListView& list, std::size_t first, std::size_t count) {
  for (Place& place : places_) {
    if (known_ && place.list == &list && !list.Contains(place.row)) Search(place, first, count);
  }
}

void FollowedStation::TakeChangedRow(const ListView& list, std::size_t position) {
  for (Place& place : places_) {
    if (place.list != &list || place.row == RowId::kNone || place.row != list.RowAt(position)) continue;
    const Station now = StationOf(list.Rows()[position]);
    // The other list may show an older state of the station; a title that is written there is nothing new.
    if (now != place.seen) station_ = place.seen = now;
  }
}

RowId FollowedStation::RowIn(const ListView& list) const {
  for (const Place& place : places_) {
    if (place.list == &list && list.Contains(place.row)) return place.row;
  }
  return RowId::kNone;
}

void FollowedStation::Mark(RowMark mark) {
  for (Place& place : places_) {
    const RowId before = std::exchange(place.marked, mark == RowMark::kNone ? RowId::kNone : place.row);
    if (before != place.marked) place.list->SetMark(before, RowMark::kNone);
    place.list->SetMark(place.marked, mark);
  }
}

PlayingMark::PlayingMark(app::ListPair lists, const platform::PlaybackMonitor& monitor)
    : monitor_(monitor), chosen_(lists), playing_(lists) {
  Bind(lists.full);
  Bind(lists.filtered);
}

void PlayingMark::Bind(ListView& list) {
  subscriptions_ += list.RowsAdded.Subscribe(
      [this, &list](std::size_t first, std::size_t count) { TakeNewRows(list, first, count); });
  subscriptions_ += list.RowChanged.Subscribe([this, &list](std::size_t position) {
    chosen_.TakeChangedRow(list, position);
    playing_.TakeChangedRow(list, position);
  });
}

void PlayingMark::TakeNewRows(const ListView& list, std::size_t first, std::size_t count) {
  chosen_.TakeNewRows(list, first, count);
  playing_.TakeNewRows(list, first, count);
  Show(state_);
}

void PlayingMark::Opening() {
  // Removes its marks first: what is followed from now on does not know them.
  playing_.Mark(RowMark::kNone);
  playing_ = chosen_;
  stage_ = Stage::kOpening;
  Opened.Raise();
  Show(PlaybackState::kConnecting);
}

void PlayingMark::Playing() {
  stage_ = Stage::kPlaying;
  Follow();
}

void PlayingMark::GivenUp() {
  if (stage_ == Stage::kOpening) Stopped();
}

void PlayingMark::Stopped() {
  stage_ = Stage::kIdle;
  Show(PlaybackState::kStopped);
}

void PlayingMark::Follow() {
  if (stage_ == Stage::kPlaying) Show(monitor_.Status().state);
}

void PlayingMark::Show(PlaybackState state) {
  const bool changed = std::exchange(state_, state) != state;
  // A handler of the change of a row may stop or start something; the latest state wins.
  RowMark mark{};
  do {
    mark = MarkOf(state_);
    playing_.Mark(mark);
  } while (mark != MarkOf(state_));
  if (changed) Changed.Raise();
}

}  // namespace ui
