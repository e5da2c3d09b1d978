#include "app/forms/translation.h"

#include <functional>

namespace app {

namespace {

/// Every control of the window with a caption, in the window's order.
void ForEachCaption(Form1& form1, const std::function<void(controls::Captioned&)>& visit) {
  for (controls::Frame* frame : {&form1.Frame2, &form1.Frame1, &form1.Frame3, &form1.frSav}) visit(*frame);
  for (controls::CommandButton* button :
       {&form1.Command1, &form1.Command6, &form1.Command3, &form1.Command2, &form1.Command7}) {
    visit(*button);
  }
  for (controls::Label* label : {&form1.Label1, &form1.lblSav, &form1.Label5, &form1.Label6, &form1.Label7,
                                 &form1.Label2, &form1.Label4, &form1.Label3}) {
    visit(*label);
  }
  for (controls::CheckBox* box : {&form1.ckSavMute, &form1.Check2, &form1.Check1, &form1.Check3}) visit(*box);
  for (controls::CommandButton& button : form1.Command8) visit(button);
  for (controls::CommandButton* button : {&form1.CommandButton1, &form1.CommandButton2, &form1.Command4,
                                          &form1.Command5, &form1.CmdInfoClose, &form1.UndoDelete}) {
    visit(*button);
  }
}

}  // namespace

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
  ForEachCaption(form1, [&](controls::Captioned& control) {
    if (!control.Caption().empty()) control.SetCaption(translated(control.Caption()));
  });
  for (controls::TextBox& box : form1.TextBox1) {
    if (!box.GetText().empty()) box.SetText(translated(box.GetText()));
  }
  if (!form1.Combo1.GetText().empty()) form1.Combo1.SetText(translated(form1.Combo1.GetText()));
  if (!form1.UpDownTextBox1.GetText().empty()) {
    form1.UpDownTextBox1.SetText(translated(form1.UpDownTextBox1.GetText()));
  }
}

}  // namespace app
