// The database layer when the connection breaks: a read is run again on a
// fresh connection, a transaction cut before its commit runs again and is
// kept once, a commit cut off is reported as of unknown outcome, a server
// killed and started again is reached again by the same connection, and no
// wait is longer than its bound.
#include "core/Connections.h"
#include "core/Db.h"
#include "schema/SchemaLoader.h"
#include "support/ServidorPrivado.h"
#include "support/TestEnv.h"

#include <QElapsedTimer>
#include <QtTest>
#include <thread>

using namespace hipico;
using namespace hipico::test;

class TstFallas : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;

    // Cuts the connection from the server's side, as a lost network would.
    void cortar(Db& db) {
        const long long id = Row::toInteger(db.scalar("SELECT CONNECTION_ID()"));
        // From the same server: a cluster node knows only its own connections.
        Db::open(db.connectionString())->exec("KILL CONNECTION " + std::to_string(id));
    }
    long long filas() { return static_cast<long long>(numberOf(env->db(), "SELECT count(*) FROM notas")); }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("fallas");
        env->db().exec("CREATE TABLE notas (id INT AUTO_INCREMENT PRIMARY KEY, t VARCHAR(20)) ENGINE=InnoDB");
    }
    void init() { env->db().exec("DELETE FROM notas"); }

    void aReadRunsAgainOnAFreshConnection() {
        auto db = env->connect();
        cortar(*db);
        QCOMPARE(Row::toInteger(db->scalar("SELECT 7")), 7LL);
        QCOMPARE(db->reconnections(), 1);
        // The session's settings come back with the connection.
        QCOMPARE(Row::toInteger(db->scalar("SELECT @@innodb_lock_wait_timeout")), (long long)Db::kLockWaitSeconds);
    }

    void aWriteOnABrokenConnectionIsNotRepeated() {
        auto db = env->connect();
        cortar(*db);
        try {
            db->exec("INSERT INTO notas (t) VALUES ('suelta')");
            QFAIL("the write was repeated behind the caller's back");
        } catch (const DbError& e) {
            QVERIFY(e.isConnectionLost());
            QVERIFY(!e.outcomeUnknown());
        }
        QCOMPARE(filas(), 0LL);
        db->exec("INSERT INTO notas (t) VALUES ('siguiente')");
        QCOMPARE(filas(), 1LL);
    }

    void aTransactionCutBeforeItsCommitRunsAgainOnce() {
        auto db = env->connect();
        int corridas = 0;
        db->inTransaction([&] {
            ++corridas;
            db->exec("INSERT INTO notas (t) VALUES ('venta')");
            if (corridas == 1) cortar(*db);
            db->exec("INSERT INTO notas (t) VALUES ('llaves')");
        });
        QCOMPARE(corridas, 2);
        QCOMPARE(filas(), 2LL);
    }

    void aCommitCutOffHasAnUnknownOutcome() {
        auto db = env->connect();
        try {
            db->inTransaction([&] {
                db->exec("INSERT INTO notas (t) VALUES ('quizas')");
                cortar(*db);
            });
            QFAIL("a commit on a broken connection passed");
        } catch (const DbError& e) {
            QVERIFY(e.outcomeUnknown());
            QVERIFY(e.isConnectionLost());
        }
        // Here the server rolled it back; the caller had to look.
        QCOMPARE(filas(), 0LL);
        QCOMPARE(Row::toInteger(db->scalar("SELECT 1")), 1LL);
    }

    void aLockIsWaitedForABoundedTime() {
        auto a = env->connect();
        // On the same server: a cluster node's row locks hold on that node only.
        auto b = Db::open(a->connectionString());
        a->exec("INSERT INTO notas (id, t) VALUES (1, 'bloqueada')");
        a->begin();
        a->query("SELECT * FROM notas WHERE id = 1 FOR UPDATE");
        QElapsedTimer reloj;
        reloj.start();
        try {
            b->inTransaction([&] { b->query("SELECT * FROM notas WHERE id = 1 FOR UPDATE"); });
            QFAIL("the lock was not held");
        } catch (const DbError& e) {
            QVERIFY(e.isLockTimeout());
        }
        QVERIFY(reloj.elapsed() < (Db::kLockWaitSeconds + 3) * 1000);
        a->rollback();
    }

    void aServerKilledAndStartedAgainIsReachedAgain() {
        ServidorPrivado servidor("fallas", 50);
        QVERIFY(servidor.arrancar());
        const Config c = servidor.config("t_fallas_propio");
        crearEsquema(c.servidor, "CREATE TABLE notas (id INT AUTO_INCREMENT PRIMARY KEY, t VARCHAR(20));", true);
        auto db = Db::open(cadenaServidor(c));
        db->exec("INSERT INTO notas (t) VALUES ('antes')");
        servidor.matar();
        // While it is down every call fails soon, as a lost connection.
        QElapsedTimer reloj;
        reloj.start();
        for (int i = 0; i < 3; ++i) {
            try {
                db->query("SELECT count(*) FROM notas");
                QFAIL("a dead server answered");
            } catch (const DbError& e) {
                QVERIFY2(e.isConnectionLost(), e.what());
            }
        }
        QVERIFY(reloj.elapsed() < 3 * (Db::kConnectSeconds + 1) * 1000);
        QVERIFY(servidor.arrancar());
        QCOMPARE(Row::toInteger(db->scalar("SELECT count(*) FROM notas")), 1LL);
        db->inTransaction([&] { db->exec("INSERT INTO notas (t) VALUES ('despues')"); });
        QCOMPARE(Row::toInteger(db->scalar("SELECT count(*) FROM notas")), 2LL);
    }
};

QTEST_GUILESS_MAIN(TstFallas)
#include "tst_fallas.moc"
