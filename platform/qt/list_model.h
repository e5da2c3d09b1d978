#pragma once
// The rows of a list as Qt's views read them. Not a copy of the rows: texts are read when they are painted.

#include <QAbstractTableModel>
#include <vector>

#include "controls/list_view.h"
#include "platform/qt/row_icons.h"

namespace platform::qt {

/// The list announces its changes after they were made. The model therefore keeps the number of rows that the
/// views know, and returns empty data for a row that is already gone.
class ListModel final : public QAbstractTableModel {
 public:
  ListModel(const controls::ListView& list, const QtIcons& icons);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  // The announcements of the list
  void TakeAllRows();
  void TakeAddedRows(std::size_t first, std::size_t count);
  void TakeRemovedRow(std::size_t position);
  void TakeChangedRow(std::size_t position);
  /// True when the number of columns or a caption of theirs has changed.
  bool TakeColumns();

  /// For rows that are painted from now on.
  void SetIconSide(int side) { icons_.SetSide(side); }

 private:
  const controls::ListView& list_;
  RowIcons icons_;
  int rows_ = 0;
  std::vector<Text> captions_;
};

}  // namespace platform::qt
