#include "core/Db.h"

#include <soci/odbc/soci-odbc.h>
#include <soci/soci.h>
#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <cstring>

// The SOCI session opens and owns the connection and its transactions.
// Statements run directly on the session's ODBC connection handle: that way
// every text column is read whole (SOCI's own row fetch sizes its buffer by
// the declared number of characters and cuts multi-byte UTF-8 text short),
// numbers keep their type, and a statement is prepared once and run again.

namespace hipico {

QString SqlValue::toString() const {
    switch (kind_) {
    case Kind::Null: return {};
    case Kind::Integer: return QString::number(integer_);
    case Kind::Double: return QString::number(double_, 'g', 15);
    case Kind::Text: return QString::fromStdString(text_);
    }
    return {};
}

namespace {

constexpr std::size_t kPreparedLimit = 256;

std::string stateOf(const soci::odbc_soci_error& e) {
    return reinterpret_cast<const char*>(e.odbc_error_code());
}

DbError diagnose(SQLSMALLINT type, SQLHANDLE handle, const std::string& sql) {
    SQLCHAR state[SQL_SQLSTATE_SIZE + 1] = {0};
    SQLINTEGER native = 0;
    SQLCHAR message[SQL_MAX_MESSAGE_LENGTH + 1] = {0};
    SQLSMALLINT length = 0;
    std::string text = "error de base de datos";
    if (SQL_SUCCEEDED(SQLGetDiagRecA(type, handle, 1, state, &native, message, sizeof message, &length)))
        text = reinterpret_cast<const char*>(message);
    return DbError(text + " [" + sql + "]", reinterpret_cast<const char*>(state), native);
}

bool isCacheable(const std::string& sql) {
    std::size_t i = 0;
    while (i < sql.size() && std::isspace(static_cast<unsigned char>(sql[i]))) ++i;
    auto starts = [&](const char* word) {
        const std::size_t n = std::strlen(word);
        if (sql.size() - i < n) return false;
        for (std::size_t k = 0; k < n; ++k)
            if (std::tolower(static_cast<unsigned char>(sql[i + k])) != word[k]) return false;
        return true;
    };
    return starts("select") || starts("insert") || starts("update") || starts("delete");
}

}  // namespace

struct Db::Statement {
    SQLHSTMT handle = SQL_NULL_HSTMT;
    bool prepared = false;
    ~Statement() {
        if (handle != SQL_NULL_HSTMT) SQLFreeHandle(SQL_HANDLE_STMT, handle);
    }
};

Db::Db(const QString& connectionString) : connectionString_(connectionString) {
    try {
        soci::connection_parameters p(soci::odbc, connectionString.toStdString());
        p.set_option(soci::odbc_option_driver_complete, "0");
        session_ = std::make_unique<soci::session>(p);
    } catch (const soci::odbc_soci_error& e) {
        throw DbError(e.what(), stateOf(e), e.native_error_code());
    } catch (const soci::soci_error& e) {
        throw DbError(e.what());
    }
    auto* backend = static_cast<soci::odbc_session_backend*>(session_->get_backend());
    hdbc_ = backend->hdbc_;
}

Db::~Db() {
    prepared_.clear();
    oneShot_.reset();
}

std::shared_ptr<Db> Db::open(const QString& connectionString) {
    return std::shared_ptr<Db>(new Db(connectionString));
}

soci::session& Db::session() { return *session_; }

void Db::rethrow(const std::string& sql) {
    try {
        throw;
    } catch (const soci::odbc_soci_error& e) {
        throw DbError(std::string(e.what()) + " [" + sql + "]", stateOf(e), e.native_error_code());
    } catch (const soci::soci_error& e) {
        throw DbError(std::string(e.what()) + " [" + sql + "]");
    }
}

Db::Statement& Db::statement(const std::string& sql, bool cacheable) {
    if (cacheable) {
        auto it = prepared_.find(sql);
        if (it != prepared_.end()) {
            auto pos = std::find(recent_.begin(), recent_.end(), sql);
            if (pos != recent_.begin()) recent_.splice(recent_.begin(), recent_, pos);
            return *it->second;
        }
    }
    auto st = std::make_unique<Statement>();
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, static_cast<SQLHDBC>(hdbc_), &st->handle)))
        throw diagnose(SQL_HANDLE_DBC, static_cast<SQLHDBC>(hdbc_), sql);
    if (!cacheable) {
        oneShot_ = std::move(st);
        return *oneShot_;
    }
    const SQLRETURN rc = SQLPrepareA(st->handle, (SQLCHAR*)sql.data(), static_cast<SQLINTEGER>(sql.size()));
    if (!SQL_SUCCEEDED(rc)) throw diagnose(SQL_HANDLE_STMT, st->handle, sql);
    st->prepared = true;
    if (prepared_.size() >= kPreparedLimit) {
        prepared_.erase(recent_.back());
        recent_.pop_back();
    }
    recent_.push_front(sql);
    return *prepared_.emplace(sql, std::move(st)).first->second;
}

void Db::run(Statement& st, const std::string& sql, const Params& bound) {
    // The driver reads the values from these buffers when the statement runs.
    Params params = bound;
    SQLFreeStmt(st.handle, SQL_CLOSE);
    SQLFreeStmt(st.handle, SQL_RESET_PARAMS);
    std::vector<SQLLEN> lengths(params.size());
    for (std::size_t i = 0; i < params.size(); ++i) {
        SqlValue& v = params[i];
        const auto n = static_cast<SQLUSMALLINT>(i + 1);
        SQLRETURN rc = SQL_SUCCESS;
        switch (v.kind()) {
        case SqlValue::Kind::Null:
            lengths[i] = SQL_NULL_DATA;
            rc = SQLBindParameter(st.handle, n, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_VARCHAR, 1, 0, nullptr, 0, &lengths[i]);
            break;
        case SqlValue::Kind::Integer:
            lengths[i] = 0;
            rc = SQLBindParameter(st.handle, n, SQL_PARAM_INPUT, SQL_C_SBIGINT, SQL_BIGINT, 0, 0,
                                  &v.integerRef(), 0, &lengths[i]);
            break;
        case SqlValue::Kind::Double:
            lengths[i] = 0;
            rc = SQLBindParameter(st.handle, n, SQL_PARAM_INPUT, SQL_C_DOUBLE, SQL_DOUBLE, 0, 0,
                                  &v.doubleRef(), 0, &lengths[i]);
            break;
        case SqlValue::Kind::Text: {
            std::string& t = v.textRef();
            lengths[i] = static_cast<SQLLEN>(t.size());
            rc = SQLBindParameter(st.handle, n, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_VARCHAR,
                                  std::max<SQLULEN>(1, t.size()), 0, t.data(),
                                  static_cast<SQLLEN>(t.size()), &lengths[i]);
            break;
        }
        }
        if (!SQL_SUCCEEDED(rc)) throw diagnose(SQL_HANDLE_STMT, st.handle, sql);
    }
    const SQLRETURN rc = st.prepared
                             ? SQLExecute(st.handle)
                             : SQLExecDirectA(st.handle, (SQLCHAR*)sql.data(), static_cast<SQLINTEGER>(sql.size()));
    if (!SQL_SUCCEEDED(rc) && rc != SQL_NO_DATA) {
        DbError e = diagnose(SQL_HANDLE_STMT, st.handle, sql);
        SQLFreeStmt(st.handle, SQL_CLOSE);
        throw e;
    }
}

long long Db::exec(std::string_view sql, const Params& params) {
    const std::string text(sql);
    Statement& st = statement(text, isCacheable(text));
    run(st, text, params);
    SQLLEN rows = 0;
    SQLRowCount(st.handle, &rows);
    // Drain any result so the handle can run again.
    SQLFreeStmt(st.handle, SQL_CLOSE);
    return rows;
}

Recordset Db::query(std::string_view sql, const Params& params) {
    const std::string text(sql);
    Statement& st = statement(text, isCacheable(text));
    run(st, text, params);

    SQLSMALLINT count = 0;
    SQLNumResultCols(st.handle, &count);
    QStringList names;
    std::vector<SQLSMALLINT> kinds(count);
    for (SQLSMALLINT c = 0; c < count; ++c) {
        SQLCHAR name[256] = {0};
        SQLSMALLINT nameLength = 0, type = 0, digits = 0, nullable = 0;
        SQLULEN size = 0;
        SQLDescribeColA(st.handle, static_cast<SQLUSMALLINT>(c + 1), name, sizeof name, &nameLength, &type, &size,
                        &digits, &nullable);
        names << QString::fromUtf8(reinterpret_cast<const char*>(name));
        switch (type) {
        case SQL_TINYINT:
        case SQL_SMALLINT:
        case SQL_INTEGER:
        case SQL_BIGINT:
        case SQL_BIT:
            kinds[c] = SQL_C_SBIGINT;
            break;
        case SQL_DOUBLE:
        case SQL_FLOAT:
        case SQL_REAL:
        case SQL_DECIMAL:
        case SQL_NUMERIC:
            kinds[c] = SQL_C_DOUBLE;
            break;
        default:
            kinds[c] = SQL_C_CHAR;
        }
    }
    auto columns = std::make_shared<Columns>(names);
    QVector<Row> rows;
    std::vector<char> buffer(4096);
    for (;;) {
        SQLRETURN rc = SQLFetch(st.handle);
        if (rc == SQL_NO_DATA) break;
        if (!SQL_SUCCEEDED(rc)) {
            DbError e = diagnose(SQL_HANDLE_STMT, st.handle, text);
            SQLFreeStmt(st.handle, SQL_CLOSE);
            throw e;
        }
        QVector<QVariant> values(count);
        for (SQLSMALLINT c = 0; c < count; ++c) {
            const auto n = static_cast<SQLUSMALLINT>(c + 1);
            SQLLEN indicator = 0;
            if (kinds[c] == SQL_C_SBIGINT) {
                long long v = 0;
                SQLGetData(st.handle, n, SQL_C_SBIGINT, &v, sizeof v, &indicator);
                if (indicator != SQL_NULL_DATA) values[c] = v;
            } else if (kinds[c] == SQL_C_DOUBLE) {
                double v = 0;
                SQLGetData(st.handle, n, SQL_C_DOUBLE, &v, sizeof v, &indicator);
                if (indicator != SQL_NULL_DATA) values[c] = v;
            } else {
                std::string value;
                bool isNull = false;
                for (;;) {
                    rc = SQLGetData(st.handle, n, SQL_C_CHAR, buffer.data(), static_cast<SQLLEN>(buffer.size()),
                                    &indicator);
                    if (rc == SQL_NO_DATA) break;
                    if (!SQL_SUCCEEDED(rc)) {
                        DbError e = diagnose(SQL_HANDLE_STMT, st.handle, text);
                        SQLFreeStmt(st.handle, SQL_CLOSE);
                        throw e;
                    }
                    if (indicator == SQL_NULL_DATA) {
                        isNull = true;
                        break;
                    }
                    if (rc == SQL_SUCCESS_WITH_INFO &&
                        (indicator == SQL_NO_TOTAL || indicator >= static_cast<SQLLEN>(buffer.size()))) {
                        value.append(buffer.data(), buffer.size() - 1);  // the driver ends each piece with NUL
                        continue;
                    }
                    value.append(buffer.data(), static_cast<std::size_t>(indicator));
                    break;
                }
                if (!isNull) values[c] = QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size()));
            }
        }
        rows.append(Row(columns, std::move(values)));
    }
    SQLFreeStmt(st.handle, SQL_CLOSE);
    return Recordset(columns, std::move(rows));
}

QVariant Db::scalar(std::string_view sql, const Params& params) {
    const Recordset rs = query(sql, params);
    if (rs.empty() || rs.first().values().isEmpty()) return QVariant();
    return rs.first().at(0);
}

long long Db::lastInsertId() { return Row::toInteger(scalar("SELECT LAST_INSERT_ID()")); }

void Db::begin() {
    try {
        session_->begin();
        inTransaction_ = true;
    } catch (const soci::soci_error&) {
        rethrow("BEGIN");
    }
}

void Db::commit() {
    try {
        inTransaction_ = false;
        session_->commit();
    } catch (const soci::soci_error&) {
        rethrow("COMMIT");
    }
}

void Db::rollback() {
    inTransaction_ = false;
    try {
        session_->rollback();
    } catch (const soci::soci_error&) {
        // The connection may already be gone; nothing more to undo here.
    }
}

}  // namespace hipico
