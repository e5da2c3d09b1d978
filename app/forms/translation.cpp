#include "app/forms/translation.h"

namespace app {

void TranslateForm(Form1& form1, const LookUp& translated) {
  form1.form.SetCaption(translated(form1.form.Caption()));
  for (controls::ListView* list : {&form1.SymbolListview, &form1.ExplorerListFilter}) {
    for (std::size_t column = 0; column < list->Columns().size(); ++column) {
      list->SetColumnCaption(column, translated(list->Columns()[column].caption));
    }
    list->SetEmptyText(translated(list->EmptyText()));
    for (const auto mark : {controls::RowMark::kPlaying, controls::RowMark::kWaiting}) {
      list->SetMarkText(mark, translated(list->MarkText(mark)));
    }
  }
  form1.VisitCaptions([&](controls::Captioned& control) {
    if (!control.Caption().empty()) control.SetCaption(translated(control.Caption()));
  });
  form1.VisitTexts([&](controls::TextControl& control) {
    if (!control.GetText().empty()) control.SetText(translated(control.GetText()));
  });
}

}  // namespace app
