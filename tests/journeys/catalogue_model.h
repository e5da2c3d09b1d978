#pragma once
// What a user who entered, edited and deleted stations expects to find: a plain list of stations.
// Not the program's classes; this knows rows, views and files only by what was done to them.

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <vector>

#include "ports/text.h"

namespace app {

/// Names are compared and values kept as FileText gives them. Every station has a link of its own, which
/// identifies it.
class CatalogueModel {
 public:
  using Text = platform::Text;
  using Foreign = std::vector<Text>;

  struct Station {
    Text name{}, link{}, genre{}, favourite{};
    Text number{};  ///< of the entry within a playlist link
    Text shown{};   ///< what the list shows of it: an added or updated entry's number goes to the file only
    bool saved = false;
    bool overwritten = false;  ///< saved, but another station of its name was written over it since
    bool hidden = false;       ///< not in the full list until that is loaded again
    bool must_ask = false;     ///< the user counts on the question on closing
    bool loose = false;        ///< shares its section's genre, mark and number with others of its name
    std::set<Text> own{};      ///< names of sections that exist for its sake though it is not saved
  };

  enum class Outcome { kWritten, kFailed };
  enum class Place { kFullList, kView };
  enum class Field { kLink, kGenre, kFavourite, kNumber };

  /// Of the numbers that are entered here.
  static bool IsEntry(const Text& number) {
    return !number.empty() && number[0] >= u'1' && number[0] <= u'9';
  }

  struct Fields {
    Text name, link, genre, favourite, number;
    [[nodiscard]] Text EntryNumber() const { return IsEntry(number) ? number : Text(); }
  };

  [[nodiscard]] const std::vector<Station>& Stations() const { return stations_; }
  [[nodiscard]] std::vector<Station>& Stations() { return stations_; }
  [[nodiscard]] const std::map<Text, Foreign>& ForeignLines() const { return foreign_; }

  /// The file as it is at the start of the program.
  void Start(std::vector<Station> stations, std::map<Text, Foreign> foreign) {
    stations_ = std::move(stations);
    foreign_ = std::move(foreign);
    deletions_.clear();
  }

  [[nodiscard]] Station* Find(const Text& name, const Text& link) {
    return FindIf([&](const Station& station) { return station.name == name && station.link == link; });
  }
  /// The station to which a section of the file belongs.
  [[nodiscard]] Station* OfSection(const Text& name) {
    return FindIf([&](const Station& station) {
      return station.own.contains(name) || (station.saved && !station.overwritten && station.name == name);
    });
  }
  [[nodiscard]] std::size_t CountOf(const Text& name) const {
    return static_cast<std::size_t>(
        std::count_if(stations_.begin(), stations_.end(), [&](const Station& s) { return s.name == name; }));
  }

  /// A row that nobody wrote to the file: of the dialog, of an import, or an entry whose writing failed.
  void AddUnsaved(const Fields& fields, bool must_ask) {
    Station station{fields.name, fields.link, fields.genre, fields.favourite, fields.number};
    station.shown = fields.number;
    station.must_ask = must_ask;
    stations_.push_back(station);
  }

  /// One field was applied to a station; `was_in_file`: its section existed before.
  void WriteField(Station& station, Field field, const Text& value, Outcome outcome, bool was_in_file) {
    Set(station, field, value);
    if (outcome == Outcome::kFailed) {
      BecomeUnsaved(station, station.name);
    } else if (!station.saved && !was_in_file) {
      station.own.insert(station.name);
    }
    Loosen();
  }

  /// Without a selected row: a new entry.
  void Add(const Fields& fields, Place place, Outcome outcome) {
    if (outcome == Outcome::kFailed) {
      Fields kept = fields;
      kept.number = fields.EntryNumber();
      return AddUnsaved(kept, true);
    }
    Overwrite(fields.name);
    Station station{fields.name, fields.link, fields.genre, fields.favourite, fields.number};
    // A station without a name, which the file cannot list, is kept in the full list at once.
    station.hidden = place == Place::kView && !station.name.empty();
    BecomeSaved(station);
    if (!station.saved)
      station.number = station.shown = place == Place::kView ? fields.EntryNumber() : Text();
    stations_.push_back(station);
    Loosen();
  }

  /// All fields were applied to a station of the full list.
  void Update(Station& station, const Fields& fields, Outcome outcome) {
    const Text old_name = station.name;
    const std::set<Text> own = station.own;
    Take(station, fields);
    if (outcome == Outcome::kFailed) {
      station.number = station.shown = fields.EntryNumber();
      BecomeUnsaved(station, old_name);
      return Loosen();
    }
    station.number = fields.EntryNumber();
    BecomeSaved(station);
    if (!station.saved) station.number = station.shown;
    for (const Text& section : own) foreign_.erase(section);
    foreign_.erase(old_name);
    const Station updated = Extract(station);
    if (old_name != updated.name) DeleteFor(old_name, nullptr);
    Overwrite(updated.name);
    stations_.push_back(updated);
    Loosen();
  }

  /// All fields were applied in a filter view to the station of that section.
  void UpdateInView(const Text& section, const Fields& fields, Outcome outcome) {
    Station* const station = OfSection(section);
    if (outcome == Outcome::kFailed) {
      Take(*station, fields);
      station->number = station->shown = fields.EntryNumber();
      BecomeUnsaved(*station, section);
      return Loosen();
    }
    foreign_.erase(section);
    RemoveSection(section, nullptr);
    Fields kept = fields;
    kept.number = fields.EntryNumber();
    Add(kept, Place::kView, outcome);
  }

  /// The entry of a station of the full list was deleted.
  void Delete(Station& station, Outcome outcome) {
    if (outcome == Outcome::kFailed && (station.saved || !station.own.empty())) {
      station.hidden = true;
      return;
    }
    Deletion deletion;
    deletion.stations.push_back(Extract(station));
    Station& deleted = deletion.stations.front();
    if (deleted.overwritten) deleted.saved = deleted.overwritten = false;
    if (outcome == Outcome::kWritten) {
      deletion.sections = deleted.own;
      deletion.sections.insert(deleted.name);
      deletion.is_its_own = deleted.saved || deleted.own.contains(deleted.name);
      TakeForeign(deletion);
      DeleteFor(deleted.name, &deletion);
    }
    deletions_.push_back(deletion);
    Loosen();
  }

  /// A filter view deleted the entry of a section, whose content is `as_in_file`.
  void DeleteInView(const Text& section, const Station& as_in_file, Outcome outcome) {
    if (outcome == Outcome::kFailed) return;
    Deletion deletion;
    deletion.sections.insert(section);
    deletion.is_its_own = true;
    TakeForeign(deletion);
    RemoveSection(section, &deletion);
    // The old name of a renamed station that could not be written: the station itself stays.
    if (deletion.stations.empty()) deletion.stations.push_back(as_in_file);
    deletions_.push_back(deletion);
  }

  /// The last deleted entry is back; `in_file` are the sections that were there before.
  void BringBack(const std::set<Text>& in_file, bool full_list_is_shown) {
    if (deletions_.empty()) return;
    const Deletion deletion = deletions_.back();
    deletions_.pop_back();
    for (const Text& section : deletion.sections) {
      if (deletion.is_its_own) Disown(section);
      if (deletion.foreign.contains(section) && !in_file.contains(section))
        foreign_[section] = deletion.foreign.at(section);
    }
    for (Station station : deletion.stations) {
      const bool stood_in_list = !station.hidden || !station.saved;
      station.hidden = !stood_in_list && !full_list_is_shown;
      stations_.push_back(station);
    }
    for (Station station : deletion.unseen) {
      if (in_file.contains(station.name)) continue;
      station.hidden = true;
      stations_.push_back(station);
    }
    Loosen();
  }
  [[nodiscard]] bool HasDeletions() const { return !deletions_.empty(); }

  /// The full list was written; `order` holds its stations' (name, link) from top to bottom.
  void Save(const std::vector<std::pair<Text, Text>>& order) {
    for (Station& station : stations_) {
      for (const Text& section : station.own) {
        if (!station.hidden && section != station.name) foreign_.erase(section);
      }
    }
    for (const auto& [name, link] : order) {
      Station saved = Extract(*Find(name, link));
      name.empty() ? DisownUnseen(name) : Overwrite(name);
      BecomeSaved(saved);
      if (saved.saved && !IsEntry(saved.shown))
        saved.number.clear();
      else
        saved.number = saved.shown;
      stations_.push_back(saved);
    }
    for (Station& station : stations_) station.must_ask = false;
    Loosen();
  }

  /// The full list is emptied for an import.
  void EmptyList() {
    std::erase_if(stations_, [](const Station& station) {
      return !station.hidden && (station.overwritten || (!station.saved && station.own.empty()));
    });
    for (Station& station : stations_) station.hidden = true;
  }

  /// The full list is loaded again.
  void Load() {
    std::erase_if(stations_, [](const Station& station) { return station.overwritten; });
    for (Station& station : stations_) {
      station.hidden = false;
      station.shown = station.number;
    }
    Loosen();
  }

 private:
  struct Deletion {
    std::vector<Station> stations;
    std::vector<Station> unseen;  ///< of the same section, and not in the list
    std::set<Text> sections;
    bool is_its_own = false;  ///< false: the section is another station's
    std::map<Text, Foreign> foreign;
  };

  template <typename Predicate>
  Station* FindIf(const Predicate& predicate) {
    const auto found = std::find_if(stations_.begin(), stations_.end(), predicate);
    return found == stations_.end() ? nullptr : &*found;
  }
  Station Extract(const Station& station) {
    const Station copy = station;
    stations_.erase(stations_.begin() + (&station - stations_.data()));
    return copy;
  }
  static void Take(Station& station, const Fields& fields) {
    station.name = fields.name;
    station.link = fields.link;
    station.genre = fields.genre;
    station.favourite = fields.favourite;
  }
  static void Set(Station& station, Field field, const Text& value) {
    switch (field) {
      case Field::kLink:
        station.link = value;
        return;
      case Field::kGenre:
        station.genre = value;
        return;
      case Field::kFavourite:
        station.favourite = value;
        return;
      case Field::kNumber:
        station.number = station.shown = value;
    }
  }
  /// A station without a name that the file can list counts as unsaved.
  static void BecomeSaved(Station& station) {
    station.saved = !station.name.empty();
    station.overwritten = false;
    station.must_ask = false;
    station.own.clear();
    if (!station.saved) station.own.insert(station.name);
  }
  static void BecomeUnsaved(Station& station, const Text& section) {
    if (station.saved) station.own = {section};
    // A number that the column shows and the file does not contain, or the other way round.
    if (station.saved && station.shown != station.number) station.loose = true;
    station.saved = false;
    station.must_ask = true;
  }
  /// A whole station of that name is written for another than those that are here.
  void Overwrite(const Text& name) {
    for (Station& station : stations_) {
      if (station.saved && station.name == name) station.overwritten = true;
    }
    Disown(name);
  }
  /// A section of that name belongs to another station from now on.
  void Disown(const Text& name) {
    std::erase_if(stations_, [&](Station& station) {
      return station.own.erase(name) > 0 && station.hidden && !station.saved && station.own.empty();
    });
  }
  void DisownUnseen(const Text& name) {
    std::erase_if(stations_, [&](Station& station) {
      return station.hidden && station.own.erase(name) > 0 && !station.saved && station.own.empty();
    });
  }
  /// The section is gone because another row of that name was deleted or renamed.
  void DeleteFor(const Text& name, Deletion* deletion) {
    std::erase_if(stations_, [&](Station& station) {
      if (!station.saved || station.name != name) return false;
      if (station.hidden) {
        if (deletion != nullptr && !station.overwritten) deletion->unseen.push_back(station);
        return true;
      }
      if (!station.overwritten) station.own = {name};
      station.saved = station.overwritten = false;
      station.must_ask = true;
      return false;
    });
  }
  /// A filter view deleted the section: the station that it belonged to is removed.
  void RemoveSection(const Text& name, Deletion* deletion) {
    std::erase_if(stations_, [&](Station& station) {
      const bool is_it = station.saved && !station.overwritten && station.name == name;
      Station before = station;
      if (before.saved) before.shown = before.number;
      const bool dropped = is_it || (station.own.erase(name) > 0 && station.own.empty());
      if (dropped && deletion != nullptr) deletion->stations.push_back(before);
      return dropped;
    });
  }
  void TakeForeign(Deletion& deletion) {
    for (const Text& section : deletion.sections) {
      if (foreign_.contains(section)) deletion.foreign[section] = foreign_.at(section);
      foreign_.erase(section);
    }
  }
  void Loosen() {
    for (Station& station : stations_) {
      if (CountOf(station.name) > 1) station.loose = true;
    }
  }

  std::vector<Station> stations_;
  std::map<Text, Foreign> foreign_;  ///< by section, of those that have any
  std::vector<Deletion> deletions_;
};

}  // namespace app
