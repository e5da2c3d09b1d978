#include "app/forms/form2.h"

namespace app {

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
  form.Move({0, 0, 7200, 3270});
  form.SetFixedSize(true);
  Label2[0].SetCaption(u"Station");
  Label2[1].SetCaption(u"Weblink");
  Label2[2].SetCaption(u"Genre:");
  for (std::size_t row = 0; row < 2; ++row) {
    const int top = 180 + static_cast<int>(row) * 480;
    Label2[row].Move({150, top, 1100, 375});
    TextBox1[row].Move({1300, top, 5100, 375});
    CommandButton3[row].Move({6500, top, 525, 375});
    CommandButton3[row].SetGlyph(controls::Glyph::kPaste);
    CommandButton3[row].SetToolTip(u"Text aus der Zwischenablage einfügen");
  }
  Label2[2].Move({150, 1140, 1100, 375});
  Combo1.Move({1300, 1140, 5100, 375});
  Label1.SetCaption(
      u"Das passende Icon (32 Pixel) zur Radiostation muss in den Ordner 'RadioICO' kopiert werden "
      u"(Dateiname ist Radiostationsname)");
  Label1.SetLook(controls::LabelLook::kText);
  Label1.Move({150, 1695, 6900, 765});
  CommandButton1.SetCaption(u"Übernehmen");
  CommandButton1.Move({3525, 2670, 1695, 450});
  CommandButton2.SetCaption(u"Abbrechen");
  CommandButton2.Move({5325, 2670, 1695, 450});
}

}  // namespace app
