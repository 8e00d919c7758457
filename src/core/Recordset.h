#pragma once

#include "core/SqlValue.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <memory>
#include <set>

namespace hipico {

class Db;

// The columns of a fetched result: names in order, looked up without regard
// to case (as the server treats column names).
class Columns {
public:
    explicit Columns(QStringList names);
    const QStringList& names() const { return names_; }
    int size() const { return static_cast<int>(names_.size()); }
    // A name asked as text of any kind: a literal is compared as it is,
    // without making a string of it.
    int indexOf(QAnyStringView name) const;  // -1 when absent
    int require(QAnyStringView name) const;  // throws DbError when absent

private:
    // Up to this many names are compared one by one rather than looked up.
    static constexpr int kNombresComparados = 24;
    QStringList names_;
    QHash<QString, int> index_;
};

// One fetched row. Fields are read by column name whatever the column's type;
// a NULL reads as "" or 0.
class Row {
public:
    Row() = default;
    Row(std::shared_ptr<const Columns> columns, QVector<QVariant> values)
        : columns_(std::move(columns)), values_(std::move(values)) {}

    bool has(QAnyStringView column) const { return donde(column) >= 0; }
    bool isNull(QAnyStringView column) const;
    QVariant value(QAnyStringView column) const;
    QString text(QAnyStringView column) const;
    double number(QAnyStringView column) const;
    long long integer(QAnyStringView column) const;
    int toInt(QAnyStringView column) const { return static_cast<int>(integer(column)); }
    // The same, with a default for a column the row does not have (a row of
    // another table version, or an empty row).
    QString textOr(QAnyStringView column, const QString& def = {}) const {
        const int i = donde(column);
        return i < 0 ? def : toText(values_.at(i));
    }
    double numberOr(QAnyStringView column, double def = 0) const {
        const int i = donde(column);
        return i < 0 ? def : toNumber(values_.at(i));
    }
    long long integerOr(QAnyStringView column, long long def = 0) const {
        const int i = donde(column);
        return i < 0 ? def : toInteger(values_.at(i));
    }

    const QVector<QVariant>& values() const { return values_; }
    QVariant at(int i) const { return values_.value(i); }
    const Columns& columns() const { return *columns_; }

    // Conversions used by every getter (also handy for scalars).
    static QString toText(const QVariant& v);
    static double toNumber(const QVariant& v);
    static long long toInteger(const QVariant& v);

private:
    // The column's place in this row, -1 when absent.
    int donde(QAnyStringView column) const { return columns_ ? columns_->indexOf(column) : -1; }

    friend class Recordset;
    std::shared_ptr<const Columns> columns_;
    QVector<QVariant> values_;
};

// A fully fetched result. The read profile is a read-only snapshot; the edit
// profile (makeEditable) adds AddNew / Update / Delete that write one row back
// by its key, each as its own statement with bound values.
class Recordset {
public:
    enum class Profile { Read, Edit };

    Recordset() : columns_(std::make_shared<Columns>(QStringList{})) {}
    Recordset(std::shared_ptr<const Columns> columns, QVector<Row> rows)
        : columns_(std::move(columns)), rows_(std::move(rows)) {}

    int size() const { return static_cast<int>(rows_.size()); }
    bool empty() const { return rows_.isEmpty(); }
    const Row& operator[](int i) const { return rows_[i]; }
    const Row& first() const;  // throws DbError when empty
    auto begin() const { return rows_.cbegin(); }
    auto end() const { return rows_.cend(); }
    const QStringList& columnNames() const { return columns_->names(); }
    const Columns& columns() const { return *columns_; }
    std::shared_ptr<const Columns> sharedColumns() const { return columns_; }

    // Index of the first row whose column equals the text (the scan from the
    // first row that the windows do), -1 when none.
    int find(const QString& column, const QString& value) const;

    // Edit profile.
    Profile profile() const { return profile_; }
    const QString& table() const { return table_; }
    std::shared_ptr<Db> connection() const { return db_; }
    void makeEditable(std::shared_ptr<Db> db, const QString& table, const QString& keyColumn = {});
    int addNew();                                              // index of the new row
    void setValue(int row, const QString& column, const QVariant& value);
    void update(int row);                                      // writes the changed fields
    void remove(int row);                                      // deletes the row on the server

private:
    void requireEditable() const;

    std::shared_ptr<const Columns> columns_;
    QVector<Row> rows_;
    Profile profile_ = Profile::Read;
    std::shared_ptr<Db> db_;
    QString table_;
    QString key_;
    QVector<std::set<int>> dirty_;
    QVector<bool> isNew_;
};

SqlValue toSqlValue(const QVariant& v);

}  // namespace hipico
