#include "app/forms/form2.h"

#include "app/forms/grid.h"

namespace app {
namespace {

// From the left: captions, fields, buttons that paste.
constexpr int kMargin = 2 * kGrid;
constexpr int kCaptionsWide = 9 * kGrid;
constexpr int kFieldsLeft = kMargin + kCaptionsWide;
constexpr int kFieldsWide = 42 * kGrid;
constexpr int kPasteLeft = kFieldsLeft + kFieldsWide + kGrid;
constexpr int kDialogWidth = kPasteLeft + kRowHeight + kMargin;
// The buttons that end the dialog, from the right.
constexpr int kEndingWide = 15 * kGrid;
constexpr int kEndingTop = 25 * kGrid;

constexpr int TopOfRow(int row) { return kMargin + row * (kRowHeight + kGrid); }

}  // namespace

Form2::Form2()
    : inventory{{"Label2_0", &Label2[0]},
                {"TextBox1_0", &TextBox1[0], nullptr, {.named_by = &Label2[0]}},
                {"CommandButton3_0", &CommandButton3[0]},
                {"Label2_1", &Label2[1]},
                {"TextBox1_1", &TextBox1[1], nullptr, {.named_by = &Label2[1]}},
                {"CommandButton3_1", &CommandButton3[1]},
                {"Label2_2", &Label2[2]},
                {"Combo1", &Combo1, nullptr, {.named_by = &Label2[2]}},
                {"Label1", &Label1},
                {"CommandButton1", &CommandButton1, nullptr, {.key = controls::kEnterKey}},
                {"CommandButton2", &CommandButton2, nullptr, {.key = controls::kEscapeKey}}} {
  form.SetCaption(u"Neue Radiostation einfügen");
  form.Move({0, 0, kDialogWidth, kEndingTop + kRowHeight + kMargin});
  form.SetFixedSize(true);
  Label2[0].SetCaption(u"Station");
  Label2[1].SetCaption(u"Weblink");
  Label2[2].SetCaption(u"Genre:");
  for (int row = 0; row < 3; ++row) {
    Label2[static_cast<std::size_t>(row)].Move({kMargin, TopOfRow(row), kCaptionsWide, kRowHeight});
  }
  for (std::size_t row = 0; row < 2; ++row) {
    const int top = TopOfRow(static_cast<int>(row));
    TextBox1[row].Move({kFieldsLeft, top, kFieldsWide, kRowHeight});
    CommandButton3[row].Move({kPasteLeft, top, kRowHeight, kRowHeight});
    CommandButton3[row].SetGlyph(controls::Glyph::kPaste);
    CommandButton3[row].SetToolTip(u"Text aus der Zwischenablage einfügen");
  }
  Combo1.Move({kFieldsLeft, TopOfRow(2), kFieldsWide, kRowHeight});
  Label1.SetCaption(
      u"Das passende Icon (32 Pixel) zur Radiostation muss in den Ordner 'RadioICO' kopiert werden "
      u"(Dateiname ist Radiostationsname)");
  Label1.SetLook(controls::LabelLook::kText);
  Label1.Move({kMargin, TopOfRow(3), kDialogWidth - 2 * kMargin, 7 * kGrid});
  const int cancel_left = kDialogWidth - kMargin - kEndingWide;
  CommandButton1.SetCaption(u"Übernehmen");
  CommandButton1.Move({cancel_left - kGrid - kEndingWide, kEndingTop, kEndingWide, kRowHeight});
  CommandButton2.SetCaption(u"Abbrechen");
  CommandButton2.Move({cancel_left, kEndingTop, kEndingWide, kRowHeight});
}

}  // namespace app
