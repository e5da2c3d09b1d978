// Shows a form with made-up contents until it is closed, for whoever wants to look at it or click it:
// show_forms [player|empty|station|record] [rows]

#include "platform/win32/base/windows_api.h"

#include <objbase.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/forms/layout.h"
#include "platform/win32/ui/dialogs.h"
#include "platform/win32/ui/program_windows.h"

namespace {

using platform::Text;
using namespace platform::win32;

Text Number(int number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

Text NameOf(int row) {
  constexpr std::array<const char16_t*, 5> kNames = {u"Köln & Größe ", u"»Ärzte«-Radio ", u"100,5 Hit ",
                                                     u"Wellenreiter ", u"… "};
  const Text name = kNames[static_cast<std::size_t>(row) % kNames.size()];
  return row % 5 == 4 ? name : name + Number(row);
}

void Say(const char* text) {
  std::puts(text);
  std::fflush(stdout);
}

void Fill(app::Form1& form1, Win32Icons& icons, int rows, const Text& icon_path) {
  auto& list = form1.SymbolListview;
  using controls::CellLook;
  using controls::SpareRoom;
  const auto text = controls::SortKind::kNaturalOrder;
  list.AddColumn({u"Station", 300, text});
  list.AddColumn({u"Genre", 120, text});
  list.AddColumn({u"WebLink", 120, text, CellLook::kAddress, SpareRoom::kTakes});
  list.AddColumn({u"Favorit", 120, text, CellLook::kMark});
  list.AddColumn({u"Titel", 200, text, CellLook::kText, SpareRoom::kTakes});
  list.AddColumn({u"M3U Nr.", 120, text});
  const auto images = icons.ImageList_Create(32, 32, platform::kIlcMask | platform::kIlcColor32, 4, 4);
  const auto icon = icons.LoadImageW(icon_path, 32, 32);
  const int image = icons.ImageList_AddIcon(images, icon);
  icons.DestroyIcon(icon);
  list.SetImageList(static_cast<std::uint32_t>(images));
  std::vector<controls::ListRow> many;
  for (int row = 0; row < rows; ++row) {
    many.push_back(
        {controls::RowId::kNone,
         row % 3 == 2 ? -1 : image,
         controls::RowMark::kNone,
         {NameOf(row), u"Jazz äöüß", u"http://radio.example/eine/lange/adresse/stream" + Number(row),
          row % 4 == 1 ? u"1" : u"", u"Interpret – Titel", Number(row)}});
  }
  list.AddRows(std::move(many));
  list.Sort(0, controls::SortDirection::kAscending, [](const auto&, const auto&) { return 0; });
  if (list.Count() > 3) {
    list.Select(list.RowAt(1));
    list.SetMark(list.RowAt(2), controls::RowMark::kPlaying);
    list.SetMark(list.RowAt(3), controls::RowMark::kWaiting);
  }
  form1.TextBox1[0].SetText(u"Köln & Größe");
  form1.TextBox1[1].SetText(u"http://radio.example/live");
  for (const char16_t* genre : {u"Jazz", u"Rock & Pop", u"Österreich"}) form1.Combo1.AddItem(genre);
  form1.Combo1.SetListIndex(2);
  form1.UpDownTextBox1.SetText(u"1");
  form1.Label1.SetCaption(u"00:12 von 03:45");
  form1.StatusLine.SetCaption(u"Köln & Größe wird abgespielt, 128 kbit/s, MP3");
  for (auto& bar : form1.ProgressBar1) bar.SetVisible(true);
  form1.ProgressBar1[1].Move({9645, 6960, 180, 3360});
  form1.ProgressBar1[0].SetValue(9500);
  form1.ProgressBar1[1].SetValue(6000);
  form1.Label4.SetCaption(
      u"Titel: Ein langer Titel von einem Interpreten mit Ümläuten, der nicht auf eine Zeile passt");
  form1.Label3.SetCaption(
      u"Genre: Jazz\r\nStationName: Köln & Größe\r\nStationUrl: http://www.radio.example/eine/seite\r\n"
      u"AudioCodec: MPEG-1 Layer 3 (MP3)\r\nBitrate: 128\r\nhttp://radio.example/eine/lange/adresse\r\n"
      u"Ein Sender, der über sich selbst viel zu erzählen hat, so viel, dass es nicht in den Kasten passt, "
      u"und "
      u"darum mit Punkten endet, die zeigen, dass noch mehr kommt, viel mehr, als hier jemals stehen "
      u"könnte.");
  form1.Frame3.SetVisible(true);
}

int ShowPlayer(int rows, const Text& icon_path, const Text& picture_path) {
  Win32MessageLoop loop;
  Win32Icons icons;
  app::Form1 form1;
  app::WindowLayout layout(form1);
  if (rows > 0) Fill(form1, icons, rows, icon_path);
  const auto picture = icons.LoadPicture(picture_path);
  if (picture.handle != platform::PictureHandle::kNone) {
    form1.Image1.SetPicture(static_cast<std::uint32_t>(picture.handle));
    form1.Image1.Move({2000, 2100, 1500, 1200});
    form1.Image1.SetVisible(true);
  }
  FormWindow window(form1.form, form1.inventory, nullptr, icons, loop);
  Win32Dialogs dialogs(loop);
  dialogs.SetMainWindow(window.Handle());
  layout.Form_Resize();
  controls::Subscriptions said;
  said += form1.Command1.Clicked.Subscribe([] { Say("Start"); });
  said += form1.SymbolListview.SelectionChanged.Subscribe([] { Say("selected"); });
  said += form1.SymbolListview.DoubleClicked.Subscribe([](controls::RowId) { Say("double"); });
  said += form1.SymbolListview.HeaderClicked.Subscribe([](int) { Say("header"); });
  said += form1.CommandButton1.Clicked.Subscribe([&] {
    Say("save");
    dialogs.MessageBoxW(u"Möchten Sie die Liste speichern?", u"",
                        platform::kMbYesNoCancel | platform::kMbIconQuestion);
  });
  said += form1.Command5.Clicked.Subscribe([&] {
    platform::OpenFileName wanted;
    wanted.owner = 1;
    wanted.filter = Text(u"M3U-Dateien (*.m3u)\0*.m3u\0\0", 29);
    wanted.file = Text(512, u'\0');
    wanted.title = u"Playlist öffnen";
    Say(dialogs.GetOpenFileNameW(wanted) ? "chosen" : "none chosen");
  });
  said += form1.CommandButton2.Clicked.Subscribe([&] {
    app::Form2 form2;
    const auto cancel = form2.CommandButton2.Clicked.Subscribe([&] { form2.form.Close(); });
    RunNewStationDialog(form2, window.Handle(), icons, loop);
    Say("dialog closed");
  });
  Say("shown");
  RunWindow(window, form1.form, loop);
  Say("closed");
  return 0;
}

int ShowRecorder() {
  Win32MessageLoop loop(Win32MessageLoop::LongProcedures::kAreWork);
  const Win32Icons icons;
  app::RecordForm form;
  form.station.SetCaption(u"Köln & Größe");
  form.state.SetCaption(u"Aufnahme läuft");
  FormWindow window(form.form, form.inventory, nullptr, icons, loop);
  RunWindow(window, form.form, loop);
  return 0;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const std::wstring kind = argc > 1 ? argv[1] : L"player";
  const auto argument = [&](int at) {
    const std::wstring text = argc > at ? argv[at] : L"";
    return Text(text.begin(), text.end());
  };
  const int rows = argc > 2 ? static_cast<int>(std::wcstol(argv[2], nullptr, 10)) : 20;
  const int result = kind == L"record" ? ShowRecorder() : ShowPlayer(rows, argument(3), argument(4));
  ::CoUninitialize();
  return result;
}
