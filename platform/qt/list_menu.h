#pragma once
// The menu of a list, which shows the keys beside what they do. Not what its entries do.

#include <QPoint>

#include "app/forms/form_control.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/report_view.h"

namespace platform::qt {

/// Opens the menu at a place of the screen and returns at once. The inventory says which buttons have an
/// entry; it bears the button's caption and is enabled as the button is, or while a row is selected.
void ShowListMenu(const app::Inventory& inventory, ReportView& list, QtMessageLoop& loop,
                  const QPoint& place);

}  // namespace platform::qt
