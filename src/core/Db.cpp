#include "core/Db.h"

#include <QRandomGenerator>
#include <soci/odbc/soci-odbc.h>
#include <soci/soci.h>
#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>
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

// The statement's first word (after blanks) is word, in any case.
bool startsWith(const std::string& sql, const char* word) {
    std::size_t i = 0;
    while (i < sql.size() && std::isspace(static_cast<unsigned char>(sql[i]))) ++i;
    const std::size_t n = std::strlen(word);
    if (sql.size() - i < n) return false;
    for (std::size_t k = 0; k < n; ++k)
        if (std::tolower(static_cast<unsigned char>(sql[i + k])) != word[k]) return false;
    return true;
}

// A statement run with settings of its own ("SET STATEMENT ... FOR <statement>"):
// the statement itself, else the whole text.
std::string ownStatement(const std::string& sql) {
    if (!startsWith(sql, "set statement")) return sql;
    std::string lower(sql.size(), ' ');
    std::transform(sql.begin(), sql.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
    const std::size_t pos = lower.find(" for ");
    return pos == std::string::npos ? sql : sql.substr(pos + 5);
}

bool isCacheable(const std::string& text) {
    const std::string sql = ownStatement(text);
    auto starts = [&](const char* word) { return startsWith(sql, word); };
    return starts("select") || starts("insert") || starts("update") || starts("delete");
}

}  // namespace

struct Db::Statement {
    SQLHSTMT handle = SQL_NULL_HSTMT;
    bool prepared = false;
    // The columns of its last result: a statement run again gives the same
    // ones, and their lookup by name is built once.
    QStringList names;
    std::shared_ptr<const Columns> columns;
    // Its place in the order of use of the prepared statements.
    std::list<std::string>::iterator uso;
    // The values of its last run, where the driver reads them at the next
    // one: a parameter is bound again only when its kind changed or its text
    // no longer fits where it was bound (binding is most of the driver's
    // work for a short statement).
    struct Enlace {
        bool hecho = false;
        SqlValue::Kind kind = SqlValue::Kind::Null;
        const char* datos = nullptr;
    };
    Params valores;
    std::vector<SQLLEN> longitudes;
    std::vector<Enlace> enlaces;
    ~Statement() {
        if (handle != SQL_NULL_HSTMT) SQLFreeHandle(SQL_HANDLE_STMT, handle);
    }
};

Db::Db(const QString& connectionString, const QStringList& alternates)
    : connectionString_(connectionString), alternates_(alternates) {
    connect();
}

std::string Db::driverString() const {
    // The driver's own time limits ride behind the connection text: a
    // connect, a read and a write each give up after a bounded time instead
    // of waiting forever on a server that went silent.
    std::string text = connectionString_.toStdString();
    if (!text.empty() && text.back() != ';') text += ';';
    return text + "CONN_TIMEOUT=" + std::to_string(kConnectSeconds) + ";READ_TIMEOUT=" +
           std::to_string(kReadSeconds) + ";WRITE_TIMEOUT=" + std::to_string(kReadSeconds) + ";";
}

void Db::connect() {
    // The server of the last connection first, then the others in turn; the
    // one reached becomes the first for the next time.
    for (int i = 0;; ++i) {
        try {
            openSession();
            return;
        } catch (const DbError& e) {
            if (!e.isConnectionLost() || i >= alternates_.size()) throw;
            alternates_.append(connectionString_);
            connectionString_ = alternates_.takeFirst();
        }
    }
}

void Db::openSession() {
    try {
        soci::connection_parameters p(soci::odbc, driverString());
        p.set_option(soci::odbc_option_driver_complete, "0");
        session_ = std::make_unique<soci::session>(p);
    } catch (const soci::odbc_soci_error& e) {
        throw DbError(e.what(), stateOf(e), e.native_error_code());
    } catch (const soci::soci_error& e) {
        throw DbError(e.what());
    }
    auto* backend = static_cast<soci::odbc_session_backend*>(session_->get_backend());
    hdbc_ = backend->hdbc_;
    broken_ = false;
    // A lock held by another booth is waited for a bounded time, then the
    // statement fails (and the command tells the user) instead of freezing.
    // On a cluster node a read waits until the node has applied what the
    // other nodes committed before it (a window reads what it just wrote,
    // wherever it was written); a single server ignores the setting.
    execute("SET SESSION innodb_lock_wait_timeout = " + std::to_string(kLockWaitSeconds) + ", wsrep_sync_wait = 1",
            {});
    // No such variable (a server without cluster support): no row.
    const Recordset wsrep = fetch("SHOW SESSION VARIABLES LIKE 'wsrep_on'", {});
    enCluster_ = !wsrep.empty() && Row::toText(wsrep.first().at(1)).compare(QLatin1String("ON"), Qt::CaseInsensitive) == 0;
}

void Db::reconnect() {
    prepared_.clear();
    recent_.clear();
    oneShot_.reset();
    finCadena_.reset();
    inTransaction_ = false;
    broken_ = true;
    session_.reset();
    hdbc_ = nullptr;
    connect();
    ++reconnections_;
}

void Db::ensureOpen() {
    if (broken_ && !inTransaction_) reconnect();
}

Db::~Db() {
    prepared_.clear();
    oneShot_.reset();
}

std::shared_ptr<Db> Db::open(const QString& connectionString, const QStringList& alternates) {
    return std::shared_ptr<Db>(new Db(connectionString, alternates));
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
            recent_.splice(recent_.begin(), recent_, it->second->uso);
            return *it->second;
        }
    }
    // A statement run once (a transaction's start and end, a setting) runs
    // on the connection's one handle kept for them.
    if (!cacheable && oneShot_) return *oneShot_;
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
    st->uso = recent_.begin();
    return *prepared_.emplace(sql, std::move(st)).first->second;
}

void Db::run(Statement& st, const std::string& sql, const Params& bound) {
    SQLFreeStmt(st.handle, SQL_CLOSE);
    if (st.valores.size() != bound.size()) {
        SQLFreeStmt(st.handle, SQL_RESET_PARAMS);
        // Sized once: the driver keeps the addresses of these values.
        st.valores.assign(bound.size(), SqlValue());
        st.longitudes.assign(bound.size(), 0);
        st.enlaces.assign(bound.size(), Statement::Enlace());
    }
    for (std::size_t i = 0; i < bound.size(); ++i) {
        SqlValue& v = st.valores[i];
        v = bound[i];
        Statement::Enlace& e = st.enlaces[i];
        SQLLEN& longitud = st.longitudes[i];
        const auto n = static_cast<SQLUSMALLINT>(i + 1);
        const bool mismoTipo = e.hecho && e.kind == v.kind();
        SQLRETURN rc = SQL_SUCCESS;
        switch (v.kind()) {
        case SqlValue::Kind::Null:
            longitud = SQL_NULL_DATA;
            if (!mismoTipo)
                rc = SQLBindParameter(st.handle, n, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_VARCHAR, 1, 0, nullptr, 0, &longitud);
            break;
        case SqlValue::Kind::Integer:
            longitud = 0;
            if (!mismoTipo)
                rc = SQLBindParameter(st.handle, n, SQL_PARAM_INPUT, SQL_C_SBIGINT, SQL_BIGINT, 0, 0, &v.integerRef(),
                                      0, &longitud);
            break;
        case SqlValue::Kind::Double:
            longitud = 0;
            if (!mismoTipo)
                rc = SQLBindParameter(st.handle, n, SQL_PARAM_INPUT, SQL_C_DOUBLE, SQL_DOUBLE, 0, 0, &v.doubleRef(), 0,
                                      &longitud);
            break;
        case SqlValue::Kind::Text: {
            std::string& t = v.textRef();
            longitud = static_cast<SQLLEN>(t.size());
            // Still in the buffer it was bound in (a longer text moves to another one).
            if (mismoTipo && e.datos == t.data()) break;
            // Bound for as much text as its buffer holds.
            const std::size_t ancho = std::max<std::size_t>(1, t.capacity());
            e.datos = t.data();
            rc = SQLBindParameter(st.handle, n, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_VARCHAR, ancho, 0, t.data(),
                                  static_cast<SQLLEN>(ancho), &longitud);
            break;
        }
        }
        if (!SQL_SUCCEEDED(rc)) {
            e.hecho = false;
            throw diagnose(SQL_HANDLE_STMT, st.handle, sql);
        }
        e.hecho = true;
        e.kind = v.kind();
    }
    const SQLRETURN rc = st.prepared
                             ? SQLExecute(st.handle)
                             : SQLExecDirectA(st.handle, (SQLCHAR*)sql.data(), static_cast<SQLINTEGER>(sql.size()));
    if (!SQL_SUCCEEDED(rc) && rc != SQL_NO_DATA) {
        DbError e = diagnose(SQL_HANDLE_STMT, st.handle, sql);
        discard(sql);
        throw e;
    }
    noDeshecha(rc, st, sql);
}

void Db::noDeshecha(short rc, Statement& st, const std::string& sql) {
    if (rc != SQL_SUCCESS_WITH_INFO || !deshecha(st.handle)) return;
    discard(sql);
    throw DbError("la transacción fue deshecha en el servidor [" + sql + "]", "40001", 1213);
}

// A statement that ran with a note of a deadlock: the server undid the
// transaction around it (a cluster node may abort it for another node's
// write while the statement still ends): the transaction is over and must
// run again, never go on statement by statement.
bool Db::deshecha(void* handle) {
    for (SQLSMALLINT i = 1;; ++i) {
        SQLCHAR state[SQL_SQLSTATE_SIZE + 1] = {0};
        SQLINTEGER native = 0;
        SQLCHAR message[SQL_MAX_MESSAGE_LENGTH + 1] = {0};
        SQLSMALLINT length = 0;
        if (!SQL_SUCCEEDED(SQLGetDiagRecA(SQL_HANDLE_STMT, static_cast<SQLHSTMT>(handle), i, state, &native, message,
                                          sizeof message, &length)))
            return false;
        if (native == 1213 || std::strcmp(reinterpret_cast<const char*>(state), "40001") == 0) return true;
    }
}

void Db::discard(const std::string& sql) {
    // A statement that failed is never run again: after some failures (a
    // deadlock chosen by the server) the driver's prepared statement is left
    // out of step with the server and its next run waits forever. The next
    // use prepares it afresh.
    if (oneShot_) oneShot_.reset();
    auto it = prepared_.find(sql);
    if (it == prepared_.end()) return;
    recent_.erase(it->second->uso);
    prepared_.erase(it);
}

namespace {

// Statements that change nothing: after a lost connection they are simply run again.
bool isRead(const std::string& text) {
    const std::string sql = ownStatement(text);
    auto starts = [&](const char* word) { return startsWith(sql, word); };
    return (starts("select") && sql.find("FOR UPDATE") == std::string::npos) || starts("show") || starts("set ");
}


// Reading a result a block of rows at a time, each column bound to an array:
// one driver call per block instead of one per value. Only when every column
// fits a bound buffer; otherwise the caller reads value by value.

constexpr SQLULEN kFilasBloque = 256;
constexpr SQLLEN kFilasMinimas = 64;  // fewer rows than this are read value by value
constexpr SQLULEN kTextoMaximo = 1024;  // characters of the widest bound text column

// Gives false, having read nothing, when the result does not fit; a failure
// while reading calls `fallo`, which throws (before the statement is reset,
// so the driver's diagnostics are still there).
template <class Fallo>
bool fetchBlocks(SQLHSTMT h, SQLLEN filas, const std::vector<SQLSMALLINT>& kinds, const std::vector<SQLULEN>& sizes,
                 const std::shared_ptr<const Columns>& columns, QVector<Row>& rows, Fallo&& fallo) {
    const std::size_t count = kinds.size();
    // A short result (most of them: a ticket, a row of settings) is cheaper
    // read value by value than through buffers bound for a block.
    if (count == 0 || filas < kFilasMinimas) return false;
    const SQLULEN bloque = std::min(kFilasBloque, static_cast<SQLULEN>(filas));
    struct Columna {
        SQLLEN ancho = 0;  // bytes of one value
        std::vector<char> datos;
        std::vector<SQLLEN> indicadores;
    };
    std::vector<Columna> cols(count);
    for (std::size_t c = 0; c < count; ++c) {
        if (kinds[c] == SQL_C_SBIGINT) cols[c].ancho = sizeof(long long);
        else if (kinds[c] == SQL_C_DOUBLE) cols[c].ancho = sizeof(double);
        else if (sizes[c] == 0 || sizes[c] > kTextoMaximo) return false;
        else cols[c].ancho = static_cast<SQLLEN>(sizes[c] * 4 + 1);  // UTF-8, and the closing NUL
        cols[c].datos.resize(static_cast<std::size_t>(cols[c].ancho) * bloque);
        cols[c].indicadores.resize(bloque);
    }
    SQLULEN leidas = 0;
    // The statement is kept for later runs: leave it reading one row at a time.
    struct Restaurar {
        SQLHSTMT h;
        ~Restaurar() {
            SQLFreeStmt(h, SQL_UNBIND);
            SQLSetStmtAttr(h, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(SQLULEN{1}), 0);
            SQLSetStmtAttr(h, SQL_ATTR_ROWS_FETCHED_PTR, nullptr, 0);
        }
    } restaurar{h};
    if (!SQL_SUCCEEDED(SQLSetStmtAttr(h, SQL_ATTR_ROW_BIND_TYPE, reinterpret_cast<SQLPOINTER>(SQLULEN{SQL_BIND_BY_COLUMN}), 0)) ||
        !SQL_SUCCEEDED(SQLSetStmtAttr(h, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(bloque), 0)) ||
        !SQL_SUCCEEDED(SQLSetStmtAttr(h, SQL_ATTR_ROWS_FETCHED_PTR, &leidas, 0)))
        return false;
    for (std::size_t c = 0; c < count; ++c)
        if (!SQL_SUCCEEDED(SQLBindCol(h, static_cast<SQLUSMALLINT>(c + 1), kinds[c], cols[c].datos.data(),
                                      cols[c].ancho, cols[c].indicadores.data())))
            return false;
    for (;;) {
        const SQLRETURN rc = SQLFetch(h);
        if (rc == SQL_NO_DATA) return true;
        if (!SQL_SUCCEEDED(rc)) fallo();
        for (SQLULEN f = 0; f < leidas; ++f) {
            QVector<QVariant> values(static_cast<qsizetype>(count));
            for (std::size_t c = 0; c < count; ++c) {
                const SQLLEN indicador = cols[c].indicadores[f];
                if (indicador == SQL_NULL_DATA) continue;
                const char* dato = cols[c].datos.data() + f * static_cast<SQLULEN>(cols[c].ancho);
                if (kinds[c] == SQL_C_SBIGINT) {
                    long long v;
                    std::memcpy(&v, dato, sizeof v);
                    values[static_cast<qsizetype>(c)] = v;
                } else if (kinds[c] == SQL_C_DOUBLE) {
                    double v;
                    std::memcpy(&v, dato, sizeof v);
                    values[static_cast<qsizetype>(c)] = v;
                } else {
                    // A value cut short would be read wrong: say so rather than guess.
                    if (indicador == SQL_NO_TOTAL || indicador >= cols[c].ancho) fallo();
                    values[static_cast<qsizetype>(c)] = QString::fromUtf8(dato, static_cast<qsizetype>(indicador));
                }
            }
            rows.append(Row(columns, std::move(values)));
        }
    }
}

}  // namespace

template <class F>
auto Db::withConnection(const std::string& sql, F&& work) -> decltype(work()) {
    ensureOpen();
    const Reloj::time_point inicio = Reloj::now();
    for (int attempt = 1;; ++attempt) {
        try {
            return work();
        } catch (const DbError& e) {
            // A statement run alone (no transaction open) that a cluster
            // aborted for another node's write, a read of the schema while a
            // table's change replicates among them, was undone whole by the
            // server: it is run again. Inside a transaction the whole
            // transaction runs again (inTransaction).
            if (!inTransaction_ && pausaTrasConflicto(e, attempt, inicio)) continue;
            if (!e.isConnectionLost()) throw;
            broken_ = true;
            // Outside a transaction a read is run again on a fresh connection;
            // a write may have reached the server, so it is not repeated here.
            if (inTransaction_ || !isRead(sql)) throw;
            reconnect();
            return work();
        }
    }
}

long long Db::exec(std::string_view sql, const Params& params) {
    const std::string text(sql);
    return withConnection(text, [&] { return execute(text, params); });
}

long long Db::execute(const std::string& text, const Params& params) {
    Statement& st = statement(text, isCacheable(text));
    run(st, text, params);
    SQLLEN rows = 0;
    SQLRowCount(st.handle, &rows);
    // Drain any result so the handle can run again.
    SQLFreeStmt(st.handle, SQL_CLOSE);
    return static_cast<long long>(rows);
}

Recordset Db::query(std::string_view sql, const Params& params) {
    const std::string text(sql);
    Recordset rs = withConnection(text, [&] { return fetch(text, params); });
    // On a cluster a node once undid the transaction around a read that
    // still ended well, and the statements after it ran one by one, each on
    // its own (a ticket or a client's debit kept without the checks made
    // under the transaction's locks). A read inside a transaction is
    // followed there by a look at whether the transaction is still open;
    // if not, it runs again from the start as after any conflict.
    if (enCluster_ && inTransaction_) {
        const Recordset abierta = fetch("SELECT @@in_transaction", {});
        if (abierta.empty() || Row::toInteger(abierta.first().at(0)) != 1)
            throw DbError("la transacción fue deshecha en el servidor [" + text + "]", "40001", 1213);
    }
    return rs;
}

Recordset Db::fetch(const std::string& text, const Params& params) {
    Statement& st = statement(text, isCacheable(text));
    run(st, text, params);

    SQLSMALLINT count = 0;
    SQLNumResultCols(st.handle, &count);
    QStringList names;
    std::vector<SQLSMALLINT> kinds(count);
    std::vector<SQLULEN> sizes(count);
    for (SQLSMALLINT c = 0; c < count; ++c) {
        SQLCHAR name[256] = {0};
        SQLSMALLINT nameLength = 0, type = 0, digits = 0, nullable = 0;
        SQLULEN size = 0;
        SQLDescribeColA(st.handle, static_cast<SQLUSMALLINT>(c + 1), name, sizeof name, &nameLength, &type, &size,
                        &digits, &nullable);
        names << QString::fromUtf8(reinterpret_cast<const char*>(name));
        sizes[c] = size;
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
    if (!st.columns || st.names != names) {
        st.columns = std::make_shared<const Columns>(names);
        st.names = names;
    }
    const std::shared_ptr<const Columns> columns = st.columns;
    QVector<Row> rows;
    const auto fail = [&]() -> DbError {
        DbError e = diagnose(SQL_HANDLE_STMT, st.handle, text);
        discard(text);
        return e;
    };
    // The driver keeps the result on the client and knows its rows (-1: it does not).
    SQLLEN filas = -1;
    SQLRowCount(st.handle, &filas);
    if (fetchBlocks(st.handle, filas, kinds, sizes, columns, rows, [&] { throw fail(); })) {
        SQLFreeStmt(st.handle, SQL_CLOSE);
        return Recordset(columns, std::move(rows));
    }
    std::vector<char> buffer(4096);
    for (;;) {
        SQLRETURN rc = SQLFetch(st.handle);
        if (rc == SQL_NO_DATA) break;
        if (!SQL_SUCCEEDED(rc)) throw fail();
        noDeshecha(rc, st, text);
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
                    if (!SQL_SUCCEEDED(rc)) throw fail();
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

// A transaction is opened and ended by statements on a connection left in
// autocommit: one round trip each (switching the driver's autocommit off and
// on again costs two more).
void Db::begin() {
    ensureOpen();
    exec("START TRANSACTION");
    inTransaction_ = true;
}

void Db::commit() {
    inTransaction_ = false;
    try {
        execute("COMMIT", {});
    } catch (const DbError& e) {
        finCadena_.reset();
        if (!e.isConnectionLost()) throw;
        broken_ = true;
        // The server may or may not have committed before the connection
        // broke: the caller must find out (a sale by its token).
        throw DbError(std::string("resultado desconocido: ") + e.what(), kOutcomeUnknown, e.nativeCode());
    }
}

void Db::rollback() {
    inTransaction_ = false;
    finCadena_.reset();
    try {
        execute("ROLLBACK", {});
    } catch (const DbError&) {
        // The connection may already be gone (the server rolled back); it is
        // reopened before the next statement.
        broken_ = true;
    }
}

bool Db::pausaTrasConflicto(const DbError& e, int attempt, Reloj::time_point inicio) {
    // A deadlock (on a cluster also a conflict found at commit, or a
    // statement aborted for another node's write) undoes the whole
    // transaction, or the statement run alone. A cluster node that aborts a
    // transaction while its statement is reading a table's triggers may
    // report their body as broken (errors 1710 and 1711): it is undone all
    // the same.
    const bool cuerpoRoto = e.nativeCode() == 1710 || e.nativeCode() == 1711 ||
                            std::strstr(e.what(), "has an error in its body") != nullptr;
    if (!e.isDeadlock() && !cuerpoRoto) return false;
    const auto limite = inicio + std::chrono::seconds(kConflictSeconds);
    const auto ahora = Reloj::now();
    if (ahora >= limite) return false;
    // The rival transactions usually run again at once too: a random pause,
    // its ceiling doubling with each attempt (up to 0.1 s), lets them
    // through one after another, also several booths on the rows of one
    // horse from the nodes of a cluster.
    const int techo = std::min(100, 1 << std::min(attempt, 7));
    const auto pausa = std::chrono::milliseconds(1 + QRandomGenerator::global()->bounded(techo));
    std::this_thread::sleep_for(std::min<Reloj::duration>(pausa, limite - ahora));
    return true;
}

bool Db::shouldRetry(const DbError& e, int attempt, Reloj::time_point inicio) const {
    if (e.outcomeUnknown()) return false;
    // Run again from the start while the time for conflicts lasts.
    if (pausaTrasConflicto(e, attempt, inicio)) return true;
    // A connection lost before the commit was sent: the server rolled the
    // transaction back, nothing of it was written; run it once more on a
    // fresh connection.
    if (e.isConnectionLost()) return attempt < 2;
    return false;
}

}  // namespace hipico
