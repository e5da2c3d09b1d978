#pragma once
// The menu of a list, which shows the keys next to what they do. Not what its entries do.

#include <QPoint>

#include "app/forms/form_control.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/report_view.h"

namespace platform::qt {

/// Opens the menu at a place on the screen and returns at once. The inventory says which buttons and check
/// boxes have an entry; it has the control's caption and is enabled like the control, or while a row is
/// selected.
void ShowListMenu(const app::Inventory& inventory, ReportView& list, QtMessageLoop& loop,
                  const QPoint& place);

}  // namespace platform::qt
