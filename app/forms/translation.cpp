#include "app/forms/translation.h"

namespace app {

namespace {

void TranslateCaption(controls::Captioned& control, const LookUp& translated) {
  if (!control.Caption().empty()) control.SetCaption(translated(control.Caption()));
}

void TranslateWords(controls::ListView& list, const LookUp& translated) {
  for (std::size_t column = 0; column < list.Columns().size(); ++column) {
    list.SetColumnCaption(column, translated(list.Columns()[column].caption));
  }
  list.SetEmptyText(translated(list.EmptyText()));
  for (const auto mark : {controls::RowMark::kPlaying, controls::RowMark::kWaiting}) {
    list.SetMarkText(mark, translated(list.MarkText(mark)));
  }
}

/// Its sentences are translated one by one, when they are shown.
bool IsStatusLine(const FormControl& entry) {
  const auto* label = As<controls::Label>(entry);
  return label != nullptr && label->Look() == controls::LabelLook::kStatusLine;
}

}  // namespace

void TranslateCaptions(Inventory& inventory, const LookUp& translated) {
  for (FormControl& entry : inventory) {
    if (auto* list = As<controls::ListView>(entry)) TranslateWords(*list, translated);
  }
  for (FormControl& entry : inventory) {
    auto* captioned = As<controls::Captioned>(entry);
    if (captioned != nullptr && !IsStatusLine(entry)) TranslateCaption(*captioned, translated);
    for (controls::Text* text : {&entry.use.hint, &entry.use.accessible_name, &entry.use.menu_caption}) {
      if (!text->empty()) *text = translated(*text);
    }
  }
}

void TranslateForm(Form1& form1, const LookUp& translated) {
  TranslateCaption(form1.form, translated);
  TranslateCaptions(form1.inventory, translated);
  for (const FormControl& entry : form1.inventory) {
    auto* field = As<controls::TextControl>(entry);
    if (field != nullptr && !field->GetText().empty()) field->SetText(translated(field->GetText()));
  }
}

}  // namespace app
