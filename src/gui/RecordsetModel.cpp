#include "gui/RecordsetModel.h"

namespace hipico {

void RecordsetModel::setRecordset(Recordset rs) {
    QVector<Column> cols;
    for (const QString& name : rs.columnNames()) cols.append({name, name, {}, Qt::AlignLeft | Qt::AlignVCenter});
    setRecordset(std::move(rs), std::move(cols));
}

void RecordsetModel::setRecordset(Recordset rs, QVector<Column> columns) {
    beginResetModel();
    rs_ = std::move(rs);
    columns_ = std::move(columns);
    endResetModel();
}

int RecordsetModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rs_.size(); }

int RecordsetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant RecordsetModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rs_.size() || index.column() >= columns_.size()) return {};
    const Column& c = columns_[index.column()];
    const Row& r = rs_[index.row()];
    if (role == Qt::DisplayRole) {
        if (c.format) return c.format(r);
        return r.has(c.field) ? r.text(c.field) : QString();
    }
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(c.align);
    return {};
}

QVariant RecordsetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Horizontal) return section < columns_.size() ? columns_[section].header : QVariant();
    return section + 1;
}

}  // namespace hipico
