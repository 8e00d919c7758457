#pragma once

#include "core/Recordset.h"

#include <QAbstractTableModel>
#include <functional>

namespace hipico {

// Shows a fetched Recordset in a grid. Columns are chosen by name and headed
// by the captions the window uses (" BOLETO ", " CABALLO "...).
class RecordsetModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using Formatter = std::function<QString(const Row&)>;
    struct Column {
        QString header;
        QString field;        // column of the recordset
        Formatter format = {};  // optional: overrides the field's text
        Qt::Alignment align = Qt::AlignLeft | Qt::AlignVCenter;
    };

    explicit RecordsetModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

    // Every column of the recordset, headed by its name.
    void setRecordset(Recordset rs);
    // The chosen columns, in the given order.
    void setRecordset(Recordset rs, QVector<Column> columns);
    const Recordset& recordset() const { return rs_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    Recordset rs_;
    QVector<Column> columns_;
};

}  // namespace hipico
