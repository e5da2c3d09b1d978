#include "platform/qt/list_model.h"

#include "platform/qt/row_delegate.h"
#include "platform/qt/text.h"

namespace platform::qt {

ListModel::ListModel(const controls::ListView& list, const QtIcons& icons) : list_(list), icons_(icons) {
  TakeColumns();
  TakeAllRows();
}

int ListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(captions_.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  const auto& rows = list_.Rows();
  if (!index.isValid() || static_cast<std::size_t>(index.row()) >= rows.size()) return {};
  const auto& row = rows[static_cast<std::size_t>(index.row())];
  const auto column = static_cast<std::size_t>(index.column());
  if (role == Qt::DisplayRole) return CellText(row.cells[column]);
  if (role == Qt::DecorationRole && column == 0) return icons_.Of(list_, row);
  if (role == RowDelegate::kLookRole && column < list_.Columns().size()) {
    return static_cast<uint>(list_.Columns()[column].look);
  }
  if (role == RowDelegate::kMarkRole) return static_cast<uint>(row.mark);
  if (role == Qt::AccessibleTextRole && column == 0 && row.mark != controls::RowMark::kNone) {
    return QString(CellText(row.cells[0]) + QLatin1String(", ") + ToQt(list_.MarkText(row.mark)));
  }
  return {};
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const auto column = static_cast<std::size_t>(section);
  if (orientation != Qt::Horizontal || column >= captions_.size()) return {};
  if (role == Qt::DisplayRole) return CellText(captions_[column]);
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
  return {};
}

void ListModel::TakeAllRows() {
  beginResetModel();
  rows_ = static_cast<int>(list_.Count());
  endResetModel();
}

void ListModel::TakeAddedRows(std::size_t first, std::size_t count) {
  const int from = static_cast<int>(first);
  beginInsertRows({}, from, from + static_cast<int>(count) - 1);
  rows_ += static_cast<int>(count);
  endInsertRows();
}

void ListModel::TakeRemovedRow(std::size_t position) {
  const int row = static_cast<int>(position);
  beginRemoveRows({}, row, row);
  --rows_;
  endRemoveRows();
}

void ListModel::TakeChangedRow(std::size_t position) {
  const int row = static_cast<int>(position);
  // A row that the views do not know of yet is read when they hear of it.
  if (row >= rows_) return;
  Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

bool ListModel::TakeColumns() {
  std::vector<Text> captions;
  for (const auto& column : list_.Columns()) captions.push_back(column.caption);
  if (captions == captions_) return false;
  const bool renamed = captions.size() == captions_.size();
  if (!renamed) beginResetModel();
  captions_ = std::move(captions);
  if (!renamed) endResetModel();
  if (renamed) Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
  return true;
}

}  // namespace platform::qt
