#pragma once
// Binds a list in report form to the system's list view, which asks for the texts that it shows. Not what a
// selection or a double click does.

#include <functional>
#include <optional>
#include <utility>

#include "controls/list_view.h"
#include "controls/row_command.h"
#include "platform/win32/ui/column_fit.h"
#include "platform/win32/ui/control_binding.h"
#include "platform/win32/ui/dark_controls.h"
#include "platform/win32/ui/icons.h"
#include "platform/win32/ui/row_painter.h"

struct tagLVDISPINFOW;
struct tagNMLVCUSTOMDRAW;

namespace platform::win32 {

/// A selection by the user reaches the list when the user rests: at once after a click, or when keys that
/// move it are released. What a selection starts must not be started for every row that is passed.
class ListBinding final : public ControlBinding {
 public:
  ListBinding(controls::ListView& list, HWND parent, const Surroundings& around, const Win32Icons& icons);
  ~ListBinding() override;

  /// Right click or menu key; the place on the screen where the menu belongs. Raised inside the system's
  /// call: the receiver queues what it does.
  controls::Event<int, int> MenuWanted;

  [[nodiscard]] controls::ListView& List() const { return list_; }
  /// The row that is shown selected; kNone for none.
  [[nodiscard]] controls::RowId ShownId() const;

  // The gestures for the selected row, as by Enter and Delete; and for one row, whichever is selected.
  void OpenRow();
  void DeleteRow() { DeleteRow(ShownId()); }
  void OpenRow(controls::RowId id);
  void DeleteRow(controls::RowId id);
  void UseOnRow(controls::RowCommand& command, controls::RowId id, bool checked);

  std::intptr_t Notice(tagNMHDR& notice) override;
  void ContextWanted(int left, int top) override;
  void FollowScale() override;
  void FollowColors() override;

  // For the window's procedure.
  static constexpr std::uintptr_t kRestTimer = 0x46524553;
  void PressMouse();
  void PointAt(int left, int top);
  void ReleaseKey();
  void RestTimerTicked();
  /// Before and after the system paints the list.
  void PrepareHint() const;
  void PaintHint() const;
  void FollowHeader(const tagNMHDR& notice) { columns_.FollowHeader(notice); }
  /// In the dark; nothing for every other notice.
  [[nodiscard]] std::optional<std::intptr_t> PaintHeader(const tagNMHDR& notice) const;
  void FocusChanged() const;
  void FitColumns() { columns_.Fit(); }
  [[nodiscard]] bool ShowsHint() const { return list_.Count() == 0 && !list_.EmptyText().empty(); }

 protected:
  /// While the pointer is on a cell that is cut: what it says.
  [[nodiscard]] Text Tip() const override;

 private:
  void EndTooltipsOfTheSystem() const;

  // The list's state, shown.
  void Follow();
  void FollowRows(bool all);
  void FollowColumns();
  void FollowRowHeight();
  void FollowSorting();
  void FollowSelection();
  void FollowTip() const { Around().tool_tips.Show(Handle(), Tip()); }

  /// What a screen reader speaks; the marks are only painted.
  [[nodiscard]] Text SpokenCell(const controls::ListRow& row, std::size_t column) const;

  // What the system asks.
  void GiveCell(tagLVDISPINFOW& wanted) const;
  [[nodiscard]] std::intptr_t Paint(const tagNMLVCUSTOMDRAW& step);
  /// The number by which the system means all of them.
  static constexpr int kAllRows = -1;
  void RedrawRow(int row) const;
  [[nodiscard]] RowLook LookOf(int row) const;
  /// For the texts of a column that can be seen, and its caption.
  [[nodiscard]] int WidthNeeded(int column) const;
  [[nodiscard]] std::intptr_t Find(tagNMHDR& notice) const;

  // User input.
  void NoticeSelection();
  void StartRest();
  void Rest();
  void Select(controls::RowId id);
  void Click(int row);
  [[nodiscard]] std::optional<int> ShownRow() const;
  [[nodiscard]] const controls::ListRow* RowAt(int row) const;

  controls::ListView& list_;
  RowPainter painter_;
  ColumnFit columns_;
  ThemeWhenDark theme_;
  _IMAGELIST* row_height_ = nullptr;  // the system takes it from the images
  std::vector<Text> shown_captions_;
  std::uint32_t shown_images_ = 0;
  std::optional<controls::RowId> chosen_;       // by the user, which the list does not know yet
  std::optional<controls::RowId> handed_over_;  // which has its turn soon
  std::optional<int> selected_before_press_;
  std::pair<int, int> pointed_at_{-1, -1};  // row and column
  bool following_ = false;
};

}  // namespace platform::win32
