#pragma once

#include "core/Recordset.h"
#include "core/SqlValue.h"

#include <QString>
#include <QStringList>
#include <chrono>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <unordered_map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace soci {
class session;
}

namespace hipico {

// A failure reported by the server or the driver, with the driver's text.
class DbError : public std::runtime_error {
public:
    DbError(const std::string& message, std::string sqlState = {}, long nativeCode = 0)
        : std::runtime_error(message), sqlState_(std::move(sqlState)), nativeCode_(nativeCode) {}
    const std::string& sqlState() const { return sqlState_; }
    long nativeCode() const { return nativeCode_; }
    QString text() const { return QString::fromUtf8(what()); }
    bool isDeadlock() const { return nativeCode_ == 1213 || sqlState_ == "40001"; }
    bool isLockTimeout() const { return nativeCode_ == 1205; }
    // The server cannot be reached or the connection broke (gone away, lost
    // during a query, not open).
    // The connection broke while a transaction was being committed: the
    // server may or may not have kept it.
    bool outcomeUnknown() const { return sqlState_ == "08007"; }
    bool isConnectionLost() const {
        return sqlState_.rfind("08", 0) == 0 || nativeCode_ == 2002 || nativeCode_ == 2003 || nativeCode_ == 2006 ||
               nativeCode_ == 2013 || nativeCode_ == 2055;
    }

private:
    std::string sqlState_;
    long nativeCode_;
};

// One connection to a MariaDB server through ODBC (SOCI's ODBC backend).
// Every value reaches the server as a bound parameter: statements carry "?"
// where a value goes. One Db per thread.
class Db : public std::enable_shared_from_this<Db> {
public:
    // Opens the connection described by an ODBC connection string; when its
    // server cannot be reached, the alternates (the other nodes of a
    // cluster) are tried in turn, now and whenever the connection is reopened.
    static std::shared_ptr<Db> open(const QString& connectionString, const QStringList& alternates = {});
    ~Db();
    Db(const Db&) = delete;
    Db& operator=(const Db&) = delete;

    // Runs a statement that returns no rows; gives the number of rows changed.
    long long exec(std::string_view sql, const Params& params = {});
    // Runs a query and fetches every row.
    Recordset query(std::string_view sql, const Params& params = {});
    // The first column of the first row (NULL when there is no row).
    QVariant scalar(std::string_view sql, const Params& params = {});

    // The key the last insert of this connection generated.
    long long lastInsertId();

    // Runs fn inside one transaction: committed when fn returns, rolled back
    // when it throws. Called inside a transaction, fn simply joins the one
    // already open. fn may run more than once, so it only works on the
    // database and its own locals:
    // - a deadlock chosen by the server (or a conflict a cluster finds at
    //   commit) runs it again, after a random pause, for up to
    //   kConflictSeconds from the first start;
    // - a connection lost before the commit reopens the connection and runs
    //   it once more (the server rolled the first run back);
    // - a connection lost during the commit is reported as a DbError whose
    //   outcomeUnknown() is true: the caller finds out what the server kept.
    // Every wait is bounded: a lock wait fails after kLockWaitSeconds, a
    // silent server after kReadSeconds.
    template <class F>
    auto inTransaction(F&& fn) -> decltype(fn());

    static constexpr int kLockWaitSeconds = 10;
    static constexpr int kReadSeconds = 30;
    static constexpr int kConnectSeconds = 5;
    // On a cluster a conflict with another node's commit is a deadlock too;
    // booths of several nodes on one horse's rows take turns by it, as many
    // times as fit in this time (a count would give up under heavy conflict
    // while the cluster is up and selling).
    static constexpr int kConflictSeconds = 8;
    static constexpr const char* kOutcomeUnknown = "08007";

    // How many times this connection was reopened after a loss.
    int reconnections() const { return reconnections_; }
    // Reopens the connection now (the prepared statements go with the old one).
    void reconnect();

    void begin();
    void commit();
    void rollback();
    bool inTransactionNow() const { return inTransaction_; }
    // The server is a node of a cluster (its writes are certified against
    // the other nodes' at commit; its locks hold only on itself).
    bool enCluster() const { return enCluster_; }

    // Who the money journal names for what this connection writes: the
    // signed-in user and the machine (the host's name unless set).
    void firmar(const QString& usuario) { usuario_ = usuario; }
    void firmarMaquina(const QString& maquina) { maquina_ = maquina; }
    const QString& usuario() const { return usuario_; }
    const QString& maquina() const { return maquina_; }

    // The end of the money journal's chain this connection appended to last
    // (its order and hash): the next append follows it without reading it.
    // Dropped when a transaction is rolled back or its commit fails.
    struct FinCadena {
        QString cadena;
        long long orden = 0;
        QString huella;
    };
    std::optional<FinCadena>& finCadena() { return finCadena_; }

    const QString& connectionString() const { return connectionString_; }
    soci::session& session();

private:
    Db(const QString& connectionString, const QStringList& alternates);
    void openSession();
    std::string driverString() const;
    void connect();
    void ensureOpen();
    using Reloj = std::chrono::steady_clock;
    bool shouldRetry(const DbError& e, int attempt, Reloj::time_point inicio) const;
    static bool pausaTrasConflicto(const DbError& e, int attempt, Reloj::time_point inicio);
    template <class F>
    auto withConnection(const std::string& sql, F&& work) -> decltype(work());
    long long execute(const std::string& sql, const Params& params);
    Recordset fetch(const std::string& sql, const Params& params);
    [[noreturn]] void rethrow(const std::string& sql);
    struct Statement;
    Statement& statement(const std::string& sql, bool cacheable);
    void run(Statement& st, const std::string& sql, const Params& params);
    void discard(const std::string& sql);
    static bool deshecha(void* handle);
    void noDeshecha(short rc, Statement& st, const std::string& sql);

    QString connectionString_;
    QStringList alternates_;
    QString usuario_, maquina_;
    std::optional<FinCadena> finCadena_;
    std::unique_ptr<soci::session> session_;
    void* hdbc_ = nullptr;
    bool inTransaction_ = false;
    bool broken_ = false;
    // A node of a cluster (wsrep on): reads inside a transaction are
    // followed by a check that the transaction is still open.
    bool enCluster_ = false;
    int reconnections_ = 0;
    // Statements prepared once and run again with new values (the hot paths
    // of the booth repeat the same few statements all day).
    std::unordered_map<std::string, std::unique_ptr<Statement>> prepared_;
    std::list<std::string> recent_;
    std::unique_ptr<Statement> oneShot_;
};

template <class F>
auto Db::inTransaction(F&& fn) -> decltype(fn()) {
    // Already inside one: the work joins it and commits or rolls back with it.
    if (inTransaction_) return fn();
    const Reloj::time_point inicio = Reloj::now();
    for (int attempt = 1;; ++attempt) {
        begin();
        try {
            if constexpr (std::is_void_v<decltype(fn())>) {
                fn();
                commit();
                return;
            } else {
                auto result = fn();
                commit();
                return result;
            }
        } catch (const DbError& e) {
            if (inTransaction_) rollback();
            if (shouldRetry(e, attempt, inicio)) continue;
            throw;
        } catch (...) {
            if (inTransaction_) rollback();
            throw;
        }
    }
}

}  // namespace hipico
