#include "catalogue/editor_fields.h"

namespace catalogue {

using controls::CheckValue;
using platform::Text;

void EditorFields::Show(const app::Station& station) {
  form_.TextBox1[0].SetText(station.name);
  form_.TextBox1[1].SetText(station.link);
  form_.Combo1.SetText(station.genre);
  form_.Check2.SetValue(station.favourite == u"1" ? CheckValue::kChecked : CheckValue::kUnchecked);
  form_.UpDownTextBox1.SetText(station.number);
}

app::Station EditorFields::Edited(app::Station station) const {
  station.name = form_.TextBox1[0].GetText();
  station.link = form_.TextBox1[1].GetText();
  station.genre = form_.Combo1.GetText();
  station.favourite = form_.Check2.Checked() ? Text(u"1") : Text();
  station.number = form_.UpDownTextBox1.GetText();
  return station;
}

}  // namespace catalogue
