// Random work on the catalogue, compared with a plain model of what the user entered: no station vanishes
// that was not deleted, none is doubled, the file gets what the list shows, and its other lines stay.

#include "tests/journeys/catalogue_model.h"

#include <random>

#include "tests/journeys/compared_catalogue.h"

namespace app {
namespace {

using controls::ListRow;
using controls::ListView;
using controls::RowId;
using platform::MessageBoxAnswer;
using Field = CatalogueModel::Field;
using Fields = CatalogueModel::Fields;
using Outcome = CatalogueModel::Outcome;
using Place = CatalogueModel::Place;

const std::string kFirstStations =
    std::string(kTopOfTheFile) +
    "[Radio 1]\r\nStation=Radio 1\r\nLink=http://first/1\r\nGenre=Rock\r\nFavorit=1\r\nM3uNr=3\r\n; a "
    "comment\r\n"
    "[K\xFCste]\r\nFremd=other program\r\nLink=http://first/2\r\nGenre=Pop & Hits\r\n\r\n"
    "[Settings of another program]\r\nLink=http://first/3\r\nKey=value\r\nLines without a sign\r\n"
    "[Radio 2]\r\nLink=http://first/4\r\nFavorit=1\r\n";

class CatalogueModelTest : public ComparedCatalogue, public testing::WithParamInterface<unsigned> {
 protected:
  static constexpr int kSteps = 1000;

  void Run() {
    random.seed(GetParam());
    internet.answer.status = u"404";
    Start(kFirstStations);
    Adopt();
    for (int step = 1; step <= kSteps; ++step) {
      Step();
      Check();
      if (HasFailure()) FAIL() << "seed " << GetParam() << ", step " << step << "; before:" << LastActions();
    }
  }

 private:
  // Choosing

  std::size_t Below(std::size_t bound) { return random() % bound; }
  bool OneIn(std::size_t count) { return Below(count) == 0; }
  template <std::size_t kSize>
  Text OneOf(const char16_t* const (&texts)[kSize]) {
    return texts[Below(kSize)];
  }
  Text NewNumber() {
    const std::string digits = std::to_string(++last_number);
    return {digits.begin(), digits.end()};
  }
  /// A new link, which identifies a station from now on.
  Text NewLink() { return u"http://l/" + NewNumber() + OneOf({u"", u"", u".m3u", u"\u0436"}); }
  Text AnyName() {
    if (OneIn(4)) {
      return OneOf({u"Radio 1", u"radio 1", u" Radio 1", u"K\u00FCste", u"K\u00DCSTE\t", u"Radio 2", u"a]b",
                    u"[x", u";y", u"\u0420\u0430\u0434\u0438\u043E", u" ", u"\t"});
    }
    return OneOf({u"", u" ", u"\u00D6", u"\u0436 ", u"S=", u"["}) + u"Sender " + NewNumber() +
           OneOf({u"", u"", u" ", u"]", u"\u00DF", u"\u4E2D", u"\t"});
  }
  Text AnyGenre() { return OneOf({u"Rock", u"Pop & Hits", u" Gr\u00F6\u00DFe ", u"", u"\u0436", u"\"x\""}); }
  Text AnyNumber() { return OneOf({u"", u"0", u"3", u"12", u"x"}); }

  // Steps

  void Step() {
    if (OneIn(25)) return ToggleDisk();
    if (OneIn(60)) return EndAndStartAgain();
    if (model.Stations().size() > 40) return DeleteOne();
    InView() ? StepInView() : StepInFullList();
  }
  void StepInFullList() {
    switch (Below(14)) {
      case 0:
        return Import();
      case 1:
        return UseDialog();
      case 2:
        return AddEntry();
      case 3:
      case 4:
        return ToggleFavourite();
      case 5:
        return Apply(Field::kGenre);
      case 6:
        return Apply(Field::kLink);
      case 7:
        return Apply(Field::kNumber);
      case 8:
        return ApplyAll();
      case 9:
        return DeleteOne();
      case 10:
        return Undo();
      case 11:
        return Save();
      case 12:
        return Sort();
      default:
        return EnterView();
    }
  }
  void StepInView() {
    switch (Below(13)) {
      case 0:
        return UseDialog();
      case 1:
        return AddEntry();
      case 2:
        return ToggleFavourite();
      case 3:
        return Apply(Field::kGenre);
      case 4:
        return Apply(Field::kLink);
      case 5:
        return Apply(Field::kNumber);
      case 6:
        return ApplyAll();
      case 7:
        return DeleteOne();
      case 8:
        return Undo();
      case 9:
        return Import();
      case 10:
        return EnterView();
      default:
        return LeaveView();
    }
  }

  /// Does something that may write, on a full disk if it is full now.
  template <typename Action>
  Outcome Do(const std::string& name, const Action& action) {
    actions.push_back(name);
    const std::string before = Stations();
    Form().StatusLine.SetCaption(u"");
    SetDiskFull(disk_is_full);
    action();
    SetDiskFull(false);
    const Text& said = Form().StatusLine.Caption();
    actions.back() += " -> " + Utf8(said);
    const bool failed = said.starts_with(u"Nicht gespeichert") || said.starts_with(u"Nicht gel\u00F6scht");
    if (failed) {
      EXPECT_TRUE(disk_is_full) << "the notice is wrong";
    }
    if (disk_is_full) {
      EXPECT_EQ(Stations(), before) << "written on a full disk";
    }
    return failed ? Outcome::kFailed : Outcome::kWritten;
  }

  void ToggleDisk() {
    disk_is_full = !disk_is_full;
    actions.push_back(disk_is_full ? "disk is full" : "disk has room");
  }

  void Import() {
    const bool into_view = InView();
    const std::string line_end = OneIn(3) ? "\r\n" : "\n";
    std::string playlist;
    std::vector<Fields> entries;
    for (std::size_t count = 1 + Below(3); count > 0; --count) {
      Text name = into_view ? u"Only here " + NewNumber() : AnyName();
      name = form.Decoded(conversion.WideCharToMultiByte(platform::CodePage::kAnsi, name));
      const Text link = NewLink();
      playlist += "#EXTINF:-1," + conversion.WideCharToMultiByte(platform::CodePage::kAnsi, name) + line_end +
                  conversion.WideCharToMultiByte(platform::CodePage::kAnsi, link) + line_end;
      actions.push_back("  " + Utf8(name) + " " + Utf8(link));
      entries.push_back({form.Name(name), form.Value(link), u"", u"", u""});
    }
    folder.Write("list.m3u", playlist);
    dialogs.chosen_file = folder.TextPath("list.m3u");
    const bool empty = OneIn(6);
    dialogs.answers = {empty ? MessageBoxAnswer::kNo : MessageBoxAnswer::kYes};
    Do(empty ? "import into the emptied list" : "import", [this] { Form().Command5.Click(); });
    if (into_view) return;
    if (empty) model.EmptyList();
    for (const Fields& entry : entries) model.AddUnsaved(entry, false);
  }

  void UseDialog() {
    new_name = AnyName();
    new_link = NewLink();
    actions.push_back("  " + Utf8(new_name) + " " + Utf8(new_link));
    const bool save = !InView() && OneIn(3);
    dialogs.answers = {save ? MessageBoxAnswer::kYes : MessageBoxAnswer::kNo};
    const Outcome outcome = Do("dialog", [this] { Form().CommandButton2.Click(); });
    const Text genre = u"80er/90er";
    model.AddUnsaved({form.Name(new_name), form.Value(new_link), genre, u"", u""}, true);
    if (save) Saved(outcome);
  }

  Fields FillFields(const Text& name) {
    Form().TextBox1[0].SetText(name);
    Form().TextBox1[1].SetText(NewLink());
    Form().Combo1.Type(AnyGenre());
    Form().UpDownTextBox1.SetText(AnyNumber());
    const Fields fields{form.Name(name), form.Value(Form().TextBox1[1].GetText()),
                        form.Value(Form().Combo1.GetText()), Form().Check2.Checked() ? u"1" : u"",
                        Form().UpDownTextBox1.GetText()};
    actions.push_back("  " + Utf8(fields.name) + " " + Utf8(fields.link) + " " + Utf8(fields.genre) + " " +
                      Utf8(fields.favourite) + " " + Utf8(fields.number));
    return fields;
  }

  void AddEntry() {
    List().Select(RowId::kNone);
    const Fields fields = FillFields(AnyName());
    dialogs.answers = {MessageBoxAnswer::kOk};
    const Outcome outcome = Do("add entry", [this] { Form().Command8[1].Click(); });
    model.Add(fields, InView() ? Place::kView : Place::kFullList, outcome);
  }

  /// Selects any row that belongs to a station; null when none was found.
  Station* SelectOne() {
    if (List().Count() == 0) return nullptr;
    const ListRow row = List().Rows()[Below(List().Count())];
    const Text name = form.Name(row.cells[kNameCell]);
    // A station without a name is in a view until that is left; there it is not like the others.
    if (InView() && name.empty()) return nullptr;
    if (!List().Select(row.id)) return nullptr;
    Station* const station = InView() ? model.OfSection(name) : StationOf(row);
    if (station != nullptr) actions.push_back("  row " + Shown(*station));
    section = name;
    return station;
  }
  /// Single fields of stations that were saved into one section are nobody's own until the next loading.
  bool SharesItsSection(const Station& station) {
    return std::any_of(model.Stations().begin(), model.Stations().end(),
                       [&](const Station& other) { return other.name == station.name && other.overwritten; });
  }

  void Apply(Field field) {
    Station* const station = SelectOne();
    if (station == nullptr || SharesItsSection(*station)) return;
    if (field == Field::kLink && model.CountOf(station->name) > 1) return;
    const Fields fields = FillFields(u"");
    constexpr std::size_t kButtons[] = {2, 4, 3, 0};
    const auto index = static_cast<std::size_t>(field);
    const Text texts[] = {fields.link, fields.genre, u"", fields.number};
    Write(*station, field, texts[index], [&] { Form().Command8[kButtons[index]].Click(); });
  }
  void ToggleFavourite() {
    Station* const station = SelectOne();
    if (station == nullptr || SharesItsSection(*station)) return;
    const Text value = Form().Check2.Checked() ? u"" : u"1";
    Write(*station, Field::kFavourite, value, [this] { Form().Check2.Click(); });
  }
  template <typename Action>
  void Write(Station& station, Field field, const Text& value, const Action& action) {
    const bool was_in_file = ReadStationFile(form, Stations()).contains(section);
    const Outcome outcome = Do("apply field " + std::to_string(static_cast<int>(field)), action);
    model.WriteField(station, field, value, outcome, was_in_file);
  }

  void ApplyAll() {
    Station* const station = SelectOne();
    if (station == nullptr || SharesItsSection(*station)) return;
    const Text same = List().Cell(List().SelectedRow(), kNameCell);
    const Fields fields = FillFields(OneIn(2) ? same : AnyName());
    const Outcome outcome = Do("apply all", [this] { Form().Command8[1].Click(); });
    if (InView()) {
      model.UpdateInView(section, fields, outcome);
    } else {
      model.Update(*station, fields, outcome);
    }
  }

  void DeleteOne() {
    Station* const station = SelectOne();
    if (station == nullptr) return InView() ? LeaveView() : void();
    Station as_in_file = InFile(section);
    const Outcome outcome = Do("delete", [this] { Form().Command8[3].Click(); });
    if (InView()) {
      model.DeleteInView(section, as_in_file, outcome);
    } else {
      model.Delete(*station, outcome);
    }
  }
  void Undo() {
    const bool expected = model.HasDeletions();
    std::set<Text> in_file;
    for (const auto& [name, keys] : ReadStationFile(form, Stations())) in_file.insert(name);
    const Outcome outcome = Do("undo", [this] { Form().UndoDelete.Click(); });
    const Text& said = Form().StatusLine.Caption();
    if (said.ends_with(u"ist wieder da.")) return model.BringBack(in_file, !InView());
    EXPECT_TRUE(!expected || outcome == Outcome::kFailed || said.starts_with(u"Nicht zur\u00FCckgeholt"))
        << "nothing came back and nothing was said";
  }

  void Save() {
    Saved(Do("save", [this] { Form().CommandButton1.Click(); }));
  }
  void Saved(Outcome outcome) {
    EXPECT_EQ(window->GetSettings().CatalogueChanged, outcome == Outcome::kFailed);
    if (outcome == Outcome::kWritten) model.Save(Order());
  }
  void Sort() {
    actions.push_back("sort");
    Form().SymbolListview.ClickHeader(static_cast<int>(Below(6)));
  }

  void EnterView() {
    actions.push_back("view");
    Form().Combo1.Type(AnyGenre());
    controls::CheckBox& box = OneIn(2) ? Form().Check1 : Form().Check3;
    if (box.Checked()) return;
    box.Click();
    // Without a genre there is no filter: the full list is loaded instead.
    if (&box == &Form().Check1 && Form().Combo1.GetText().empty()) Loaded();
    if (&box == &Form().Check3) CheckFavourites();
  }
  void LeaveView() {
    actions.push_back("all stations");
    (Form().Check1.Checked() ? Form().Check1 : Form().Check3).Click();
    Loaded();
  }
  void Loaded() {
    model.Load();
    CheckList();
    AdoptSharedFields();
    CheckOrder();
  }

  void EndAndStartAgain() {
    if (disk_is_full) ToggleDisk();
    const bool log_out = OneIn(2);
    const bool asked = !log_out && window->GetSettings().CatalogueChanged;
    const bool yes = OneIn(2);
    dialogs.answers = {yes ? MessageBoxAnswer::kYes : MessageBoxAnswer::kNo};
    const bool in_view = InView();
    Do(log_out ? "log out" : "close", [&] {
      Form().form.Close(log_out ? controls::CloseReason::kSessionEnd : controls::CloseReason::kUser);
    });
    dialogs.answers.clear();
    if (asked && yes && !in_view) model.Save(Order());
    Restart();
    AfterTheStart(log_out || (asked && yes) ? Unsaved::kComeBack : Unsaved::kAreGone);
  }
  enum class Unsaved { kComeBack, kAreGone };
  /// A new start shows single cells that were written for a row that is gone as a station.
  void AfterTheStart(Unsaved unsaved) {
    model.Load();
    std::vector<Station> stations = model.Stations();
    if (unsaved == Unsaved::kAreGone) {
      std::erase_if(stations, [](const Station& station) { return !station.saved; });
    }
    std::set<Text> known;
    for (const Station& station : stations) {
      if (station.saved) known.insert(station.name);
      known.insert(station.own.begin(), station.own.end());
    }
    for (const auto& [name, keys] : ReadStationFile(form, Stations())) {
      if (!known.contains(name) && !name.empty()) stations.push_back(InFile(name));
    }
    model.Start(stations, model.ForeignLines());
    CheckList();
    AdoptSharedFields();
  }

  std::mt19937 random;
  Text section;  ///< of the row that SelectOne chose
  unsigned last_number = 0;
  bool disk_is_full = false;
};

TEST_P(CatalogueModelTest, WhatTheUserEnteredIsThereOnceAndAsItWasEntered) { Run(); }

INSTANTIATE_TEST_SUITE_P(Seeds, CatalogueModelTest, testing::Range(1U, 11U));

}  // namespace
}  // namespace app
