#include "catalogue/row_commands.h"

#include <utility>

#include "app/state/scoped_flag.h"
#include "app/state/station.h"
#include "app/text/text_helpers.h"

namespace catalogue {

using controls::ListView;
using controls::RowChoice;
using controls::RowId;
using controls::RowOffer;
using platform::Text;

namespace {

Text LinkOf(const ListView& list, RowId row) {
  return Text(app::TrimControls(list.Cell(row, app::kLinkCell)));
}

}  // namespace

RowCommands::RowCommands(Parts parts, StationWriter& writer, app::WindowState& state,
                         platform::Clipboard& clipboard, Actions actions)
    : parts_(parts), writer_(writer), state_(state), clipboard_(clipboard), actions_(std::move(actions)) {
  MakeOffers();
  subscriptions_ +=
      parts_.RowFavourite.Chosen.Subscribe([this](const RowChoice& choice) { MarkFavourite(choice); });
  subscriptions_ += parts_.RowRecording.Chosen.Subscribe(
      [this](const RowChoice& choice) { actions_.record(choice.list, choice.row); });
  subscriptions_ += parts_.RowLink.Chosen.Subscribe([this](const RowChoice& choice) { CopyLink(choice); });
}

void RowCommands::MakeOffers() {
  parts_.RowFavourite.OfferFor = [](const ListView& list, RowId row) {
    return RowOffer{.available = true, .checked = list.Cell(row, app::kFavouriteCell) == u"1"};
  };
  for (controls::RowCommand* command : {&parts_.RowRecording, &parts_.RowLink}) {
    command->OfferFor = [](const ListView& list, RowId row) {
      return RowOffer{.available = !LinkOf(list, row).empty()};
    };
  }
}

void RowCommands::MarkFavourite(const RowChoice& choice) {
  writer_.WriteField(choice.list, choice.row, app::kFavouriteField, choice.checked ? u"1" : u"");
  const bool is_in_editor = &choice.list == &parts_.lists.Active() && choice.list.SelectedRow() == choice.row;
  if (!is_in_editor) return;
  const app::ScopedFlag filling(state_.filling_fields);
  parts_.Check2.SetValue(choice.checked ? controls::CheckValue::kChecked : controls::CheckValue::kUnchecked);
}

void RowCommands::CopyLink(const RowChoice& choice) { clipboard_.SetText(LinkOf(choice.list, choice.row)); }

}  // namespace catalogue
