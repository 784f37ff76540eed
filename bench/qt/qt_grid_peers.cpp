#include <malloc.h>

#include <algorithm>

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QTableWidget>

#include "bench/editor_keys.h"
#include "bench/grid_peer.h"

// The tables of the toolkit as peers of the grid: a view over a model in one vector, and the toolkit's table
// of items. Both are set up as quick as a user can have them.

namespace lorv_bench {
namespace {

QString TextOf(int row, int column, int turn) {
  char16_t text[24];
  const int length = WriteCellText(text, row, column, turn);
  return QString::fromUtf16(text, length);
}

// Texts in one vector: the quickest model a user of the toolkit can write.
class VectorModel : public QAbstractTableModel {
 public:
  explicit VectorModel(const Table& table) : table_(table) {}

  void Fill() {
    beginResetModel();
    texts_.clear();
    texts_.reserve(static_cast<std::size_t>(table_.rows) * static_cast<std::size_t>(table_.columns));
    for (int row = 0; row < table_.rows; ++row)
      for (int column = 0; column < table_.columns; ++column) texts_.push_back(TextOf(row, column, 0));
    endResetModel();
  }
  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(texts_.size()) / table_.columns;
  }
  int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : table_.columns; }
  QVariant data(const QModelIndex& index, int role) const override {
    if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
    return texts_[At(index.row(), index.column())];
  }
  bool setData(const QModelIndex& index, const QVariant& value, int /*role*/) override {
    texts_[At(index.row(), index.column())] = value.toString();
    Q_EMIT dataChanged(index, index);
    return true;
  }
  Qt::ItemFlags flags(const QModelIndex& index) const override {
    return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
  }
  bool insertRows(int row, int count, const QModelIndex& parent) override {
    beginInsertRows(parent, row, row + count - 1);
    const auto at = texts_.begin() + static_cast<std::ptrdiff_t>(At(row, 0));
    texts_.insert(at, static_cast<std::size_t>(count * table_.columns), QString());
    endInsertRows();
    return true;
  }
  // The texts themselves move, as a column that takes its number along needs it.
  void Move(int from, int to) {
    beginMoveColumns({}, from, from, {}, to > from ? to + 1 : to);
    const auto first = static_cast<std::ptrdiff_t>(std::min(from, to));
    const auto end = static_cast<std::ptrdiff_t>(std::max(from, to)) + 1;
    for (std::size_t row = 0; row < texts_.size(); row += static_cast<std::size_t>(table_.columns)) {
      const auto begin = texts_.begin() + static_cast<std::ptrdiff_t>(row);
      std::rotate(begin + first, from < to ? begin + first + 1 : begin + end - 1, begin + end);
    }
    endMoveColumns();
  }
  int CountMatches(int column, const QRegularExpression& pattern) const {
    int count = 0;
    for (std::size_t at = static_cast<std::size_t>(column); at < texts_.size();
         at += static_cast<std::size_t>(table_.columns))
      count += pattern.match(texts_[at]).hasMatch() ? 1 : 0;
    return count;
  }

 private:
  std::size_t At(int row, int column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(table_.columns) +
           static_cast<std::size_t>(column);
  }

  const Table& table_;
  std::vector<QString> texts_;
};

// What both views of the toolkit share.
class QtPeer : public GridPeer {
 public:
  void SetAgain(int turn) override {
    QAbstractItemModel& model = *View().model();
    for (int row = 0; row < table_.rows; ++row)
      for (int column = 0; column < table_.columns; ++column)
        model.setData(model.index(row, column), TextOf(row, column, turn), Qt::EditRole);
  }
  void InsertRow(int row) override { View().model()->insertRow(row); }
  void FitColumn(int column) override {
    // All rows, as the library measures them; the toolkit's default looks at a thousand.
    View().horizontalHeader()->setResizeContentsPrecision(-1);
    View().resizeColumnToContents(column);
  }
  void ScrollTo(int row) override {
    View().verticalScrollBar()->setValue(row);
    View().viewport()->repaint();
    Settle();
  }
  void Activate() override {
    View().activateWindow();
    View().setFocus();
    Settle();
  }
  void OpenEditor(int row, int column) override {
    View().setCurrentIndex(View().model()->index(row, column));
    Press(Key::F2);
    Settle();
  }
  void TypeDigit(int digit) override {
    Press(Key::Digit, digit);
    Settle();
  }
  void CloseEditor() override {
    Press(Key::Return);
    Settle();
  }
  std::u16string TextAt(int row, int column) override {
    return View().model()->index(row, column).data().toString().toStdU16String();
  }

 protected:
  explicit QtPeer(const Table& table) : table_(table) {}
  virtual QTableView& View() = 0;
  void Show() {
    QTableView& view = View();
    // The toolkit's quickest mode: rows of one height are not measured.
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view.verticalHeader()->setDefaultSectionSize(table_.row_height);
    view.horizontalHeader()->setDefaultSectionSize(table_.column_width);
    view.resize(table_.Width(), table_.Height());
    view.show();
    Settle();
  }
  static void Settle() {
    // An editor is deleted by an event of its own, which belongs to the work that closed it.
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
  }

  const Table& table_;
};

class WidgetPeer : public QtPeer {
 public:
  explicit WidgetPeer(const Table& table) : QtPeer(table) { Show(); }
  std::string Name() const override { return "QTableWidget"; }
  void Fill() override {
    view_.setRowCount(table_.rows);
    view_.setColumnCount(table_.columns);
    for (int row = 0; row < table_.rows; ++row)
      for (int column = 0; column < table_.columns; ++column)
        view_.setItem(row, column, new QTableWidgetItem(TextOf(row, column, 0)));
    Settle();
  }
  void Sort(int column, bool ascending) override {
    view_.sortItems(column, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
  }
  int Filter(int column, const char16_t* text) override {
    const QString wanted = QString::fromUtf16(text);
    int shown = 0;
    for (int row = 0; row < view_.rowCount(); ++row) {
      const bool stays = view_.item(row, column)->text().contains(wanted, Qt::CaseInsensitive);
      view_.setRowHidden(row, !stays);
      shown += stays ? 1 : 0;
    }
    return shown;
  }
  int CountCells(const char16_t* text) override {
    return static_cast<int>(view_.findItems(QString::fromUtf16(text), Qt::MatchContains).size());
  }
  int CountMatches(int column, const char16_t* pattern) override {
    const QAbstractItemModel& model = *view_.model();
    const QRegularExpression wanted(QString::fromUtf16(pattern));
    return static_cast<int>(
        model.match(model.index(0, column), Qt::DisplayRole, wanted, -1, Qt::MatchRegularExpression).size());
  }
  // What is seen moves, and the numbers stay.
  void MoveColumn(int from, int to) override {
    view_.horizontalHeader()->moveSection(from, to);
    view_.viewport()->repaint();
    Settle();
  }
  int ColumnAt(int place) override { return view_.horizontalHeader()->logicalIndex(place); }

 protected:
  QTableView& View() override { return view_; }

 private:
  QTableWidget view_;
};

class ModelPeer : public QtPeer {
 public:
  explicit ModelPeer(const Table& table) : QtPeer(table), model_(table) {
    view_.setModel(&model_);
    Show();
  }
  std::string Name() const override { return "QTableView"; }
  void Fill() override {
    model_.Fill();
    Settle();
  }
  // A proxy without a view of its own, which costs the least.
  void Sort(int column, bool ascending) override {
    QSortFilterProxyModel proxy;
    proxy.setSourceModel(&model_);
    proxy.sort(column, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
  }
  int Filter(int column, const char16_t* text) override {
    QSortFilterProxyModel proxy;
    proxy.setFilterKeyColumn(column);
    proxy.setFilterCaseSensitivity(Qt::CaseInsensitive);
    proxy.setFilterFixedString(QString::fromUtf16(text));
    proxy.setSourceModel(&model_);
    return proxy.rowCount();
  }
  int CountCells(const char16_t* text) override {
    qsizetype count = 0;
    for (int column = 0; column < table_.columns; ++column)
      count += model_
                   .match(model_.index(0, column), Qt::DisplayRole, QString::fromUtf16(text), -1,
                          Qt::MatchContains)
                   .size();
    return static_cast<int>(count);
  }
  int CountMatches(int column, const char16_t* pattern) override {
    return model_.CountMatches(column, QRegularExpression(QString::fromUtf16(pattern)));
  }
  void MoveColumn(int from, int to) override {
    model_.Move(from, to);
    view_.viewport()->repaint();
    Settle();
  }

 protected:
  QTableView& View() override { return view_; }

 private:
  VectorModel model_;
  QTableView view_;
};

}  // namespace

std::vector<std::unique_ptr<GridPeer>> MakeGridPeers(const Table& table) {
  std::vector<std::unique_ptr<GridPeer>> peers;
  peers.push_back(std::make_unique<WidgetPeer>(table));
  peers.push_back(std::make_unique<ModelPeer>(table));
  return peers;
}

std::size_t HeapInUse() {
  const struct mallinfo2 info = mallinfo2();
  // Large blocks are mapped and counted apart.
  return info.uordblks + info.hblkhd;
}

}  // namespace lorv_bench
