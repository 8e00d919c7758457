#include "core/Recordset.h"

#include "core/Db.h"

#include <QRegularExpression>
#include <cmath>

namespace hipico {

namespace {

QString quoteIdentifier(const QString& name) {
    static const QRegularExpression valid(QStringLiteral("^[A-Za-z0-9_]+$"));
    if (!valid.match(name).hasMatch())
        throw DbError("nombre de tabla o columna no válido: " + name.toStdString());
    return QLatin1Char('`') + name + QLatin1Char('`');
}

}  // namespace

Columns::Columns(QStringList names) : names_(std::move(names)) {
    // Only a wide result is looked up through an index (see indexOf).
    if (names_.size() <= kNombresComparados) return;
    for (int i = 0; i < names_.size(); ++i) {
        const QString key = names_[i].toLower();
        if (!index_.contains(key)) index_.insert(key, i);
    }
}

int Columns::indexOf(QAnyStringView name) const {
    // The names of a short result are compared in place: a name asked as
    // the server gives it first, then without regard to case.
    if (names_.size() <= kNombresComparados) {
        for (int i = 0; i < names_.size(); ++i)
            if (QAnyStringView::equal(name, names_[i])) return i;
        for (int i = 0; i < names_.size(); ++i)
            if (QAnyStringView::compare(name, names_[i], Qt::CaseInsensitive) == 0) return i;
        return -1;
    }
    // A wide one through its index (mostly asked in lower case, as the
    // server gives names: that lookup first, without a lower-case copy).
    const QString clave = name.toString();
    const auto it = index_.constFind(clave);
    if (it != index_.constEnd()) return *it;
    return index_.value(clave.toLower(), -1);
}

int Columns::require(QAnyStringView name) const {
    const int i = indexOf(name);
    if (i < 0) throw DbError("campo desconocido: " + name.toString().toStdString());
    return i;
}

QString Row::toText(const QVariant& v) {
    if (!v.isValid() || v.isNull()) return {};
    switch (v.typeId()) {
    case QMetaType::Double: {
        const double d = v.toDouble();
        if (std::isfinite(d) && d == std::trunc(d) && std::fabs(d) < 1e15)
            return QString::number(static_cast<long long>(d));
        return QString::number(d, 'g', 15);
    }
    default:
        return v.toString();
    }
}

double Row::toNumber(const QVariant& v) {
    if (!v.isValid() || v.isNull()) return 0;
    switch (v.typeId()) {
    case QMetaType::Double:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Int:
    case QMetaType::UInt:
        return v.toDouble();
    default: {
        QString t = v.toString().trimmed();
        t.replace(QLatin1Char(','), QLatin1Char('.'));
        bool ok = false;
        const double d = t.toDouble(&ok);
        return ok ? d : 0;
    }
    }
}

long long Row::toInteger(const QVariant& v) {
    if (!v.isValid() || v.isNull()) return 0;
    switch (v.typeId()) {
    case QMetaType::LongLong:
    case QMetaType::Int:
        return v.toLongLong();
    case QMetaType::ULongLong:
    case QMetaType::UInt:
        return static_cast<long long>(v.toULongLong());
    default:
        return std::llround(toNumber(v));
    }
}

bool Row::isNull(QAnyStringView column) const {
    const QVariant& v = values_.at(columns_->require(column));
    return !v.isValid() || v.isNull();
}

QVariant Row::value(QAnyStringView column) const { return values_.at(columns_->require(column)); }
QString Row::text(QAnyStringView column) const { return toText(values_.at(columns_->require(column))); }
double Row::number(QAnyStringView column) const { return toNumber(values_.at(columns_->require(column))); }
long long Row::integer(QAnyStringView column) const { return toInteger(values_.at(columns_->require(column))); }

const Row& Recordset::first() const {
    if (rows_.isEmpty()) throw DbError("no hay registros");
    return rows_.first();
}

int Recordset::find(const QString& column, const QString& value) const {
    const int c = columns_->indexOf(column);
    if (c < 0) return -1;
    for (int i = 0; i < rows_.size(); ++i)
        if (Row::toText(rows_[i].values_.at(c)) == value) return i;
    return -1;
}

SqlValue toSqlValue(const QVariant& v) {
    if (!v.isValid() || v.isNull()) return SqlValue();
    switch (v.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return SqlValue(v.toDouble());
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Bool:
        return SqlValue(v.toLongLong());
    default:
        return SqlValue(v.toString());
    }
}

void Recordset::makeEditable(std::shared_ptr<Db> db, const QString& table, const QString& keyColumn) {
    db_ = std::move(db);
    table_ = table;
    key_ = keyColumn;
    if (key_.isEmpty()) {
        const Recordset keys =
            db_->query("SHOW KEYS FROM " + quoteIdentifier(table).toStdString() + " WHERE Key_name='PRIMARY'");
        key_ = keys.empty() ? columns_->names().value(0) : keys.first().text("Column_name");
    }
    profile_ = Profile::Edit;
    dirty_ = QVector<std::set<int>>(rows_.size());
    isNew_ = QVector<bool>(rows_.size(), false);
}

void Recordset::requireEditable() const {
    if (profile_ != Profile::Edit || !db_) throw DbError("el recordset es de solo lectura");
}

int Recordset::addNew() {
    requireEditable();
    rows_.append(Row(columns_, QVector<QVariant>(columns_->size())));
    dirty_.append(std::set<int>{});
    isNew_.append(true);
    return static_cast<int>(rows_.size()) - 1;
}

void Recordset::setValue(int row, const QString& column, const QVariant& value) {
    requireEditable();
    const int c = columns_->require(column);
    rows_[row].values_[c] = value;
    dirty_[row].insert(c);
}

void Recordset::update(int row) {
    requireEditable();
    const int keyIndex = columns_->require(key_);
    Params params;
    QStringList parts;
    for (int c : dirty_[row]) {
        parts << quoteIdentifier(columns_->names()[c]);
        params.push_back(toSqlValue(rows_[row].values_[c]));
    }
    const QString table = quoteIdentifier(table_);
    if (isNew_[row]) {
        QStringList marks;
        for (int i = 0; i < parts.size(); ++i) marks << QStringLiteral("?");
        db_->exec(("INSERT INTO " + table + " (" + parts.join(',') + ") VALUES (" + marks.join(',') + ")")
                      .toStdString(),
                  params);
        const long long key = db_->lastInsertId();
        const Params keyParam{rows_[row].values_[keyIndex].isNull() ? SqlValue(key)
                                                                     : toSqlValue(rows_[row].values_[keyIndex])};
        const Recordset fresh =
            db_->query(("SELECT * FROM " + table + " WHERE " + quoteIdentifier(key_) + "=?").toStdString(), keyParam);
        if (!fresh.empty()) {
            for (int c = 0; c < columns_->size(); ++c) {
                const int f = fresh.columns().indexOf(columns_->names()[c]);
                if (f >= 0) rows_[row].values_[c] = fresh.first().at(f);
            }
        }
        isNew_[row] = false;
    } else if (!parts.isEmpty()) {
        QStringList sets;
        for (const QString& p : parts) sets << p + "=?";
        params.push_back(toSqlValue(rows_[row].values_[keyIndex]));
        db_->exec(("UPDATE " + table + " SET " + sets.join(',') + " WHERE " + quoteIdentifier(key_) + "=? LIMIT 1")
                      .toStdString(),
                  params);
    }
    dirty_[row].clear();
}

void Recordset::remove(int row) {
    requireEditable();
    if (!isNew_[row]) {
        const int keyIndex = columns_->require(key_);
        db_->exec(("DELETE FROM " + quoteIdentifier(table_) + " WHERE " + quoteIdentifier(key_) + "=? LIMIT 1")
                      .toStdString(),
                  {toSqlValue(rows_[row].values_[keyIndex])});
    }
    rows_.remove(row);
    dirty_.remove(row);
    isNew_.remove(row);
}

}  // namespace hipico
