// The database layer against the private server through the real ODBC driver:
// bound values round-trip unchanged, fields read by name whatever their type,
// the edit profile writes back, transactions hold, and concurrent inserts each
// get their own number.
#include "core/Cipher.h"
#include "core/Db.h"
#include "support/TestEnv.h"

#include <QtTest>
#include <atomic>
#include <set>
#include <thread>

using namespace hipico;
using namespace hipico::test;

class TstDb : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;

    static QString everyHighCharacter() {
        QString s;
        for (int c = 0x80; c <= 0xFF; ++c) s.append(caracterAnsi(c));
        return s;
    }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("db");
        env->db().exec("CREATE TABLE textos (id INT AUTO_INCREMENT PRIMARY KEY, "
                       "u VARCHAR(400) NOT NULL DEFAULT '', "
                       "l VARCHAR(300) CHARACTER SET latin1 NOT NULL DEFAULT '', "
                       "n DOUBLE NULL, i INT NULL) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4");
    }

    void roundTrip_data() {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("latin1");
        QTest::newRow("quote") << "o'brien" << true;
        QTest::newRow("injection") << "'; drop table usuarios; --" << true;
        QTest::newRow("backslashes") << R"(C:\temp\'x\\)" << true;
        QTest::newRow("double quotes") << "dijo \"hola\"" << true;
        QTest::newRow("accents") << "ÁÉÍÓÚ ñÑ ü ¿¡ MONTAÑERO" << true;
        QTest::newRow("empty") << "" << true;
        QTest::newRow("cipher output") << Encriptar("1234", kClaveMaestra) << true;
        QTest::newRow("every 0x80-0xFF") << everyHighCharacter() << false;
        QTest::newRow("Ø Ù Ú Û") << QString::fromUtf8("ØÙÚÛ ØÙÚÛ") << true;
        QTest::newRow("long multibyte") << QString(300, QChar(0xDA)) << true;
    }

    void roundTrip() {
        QFETCH(QString, value);
        QFETCH(bool, latin1);
        Db& db = env->db();
        db.exec("DELETE FROM textos");
        db.exec("INSERT INTO textos (u, l) VALUES (?, ?)", {value, latin1 ? value : QString()});
        const long long id = db.lastInsertId();
        const Recordset rs = db.query("SELECT * FROM textos WHERE id = ?", {id});
        QCOMPARE(rs.size(), 1);
        QCOMPARE(rs.first().text("u"), value);
        if (latin1) QCOMPARE(rs.first().text("L"), value);  // field names ignore case
        // The bound text finds the row, in both character sets.
        QCOMPARE(db.query("SELECT id FROM textos WHERE u = ?", {value}).size(), 1);
        if (latin1) QCOMPARE(db.query("SELECT id FROM textos WHERE l = ?", {value}).size(), 1);
        // An update with the value bound leaves it unchanged too.
        QCOMPARE(db.exec("UPDATE textos SET u = ? WHERE id = ? LIMIT 1", {value + "x", id}), 1LL);
        QCOMPARE(textOf(db, "SELECT u FROM textos WHERE id = ?", {id}), value + "x");
    }

    // Results are read a block of rows at a time: every row, value and NULL
    // arrives whatever the count against the block's size, and a result with
    // a column too wide for a block (TEXT) is read value by value the same way.
    void largeResults_data() {
        QTest::addColumn<int>("filas");
        QTest::addColumn<QString>("texto");
        for (int n : {0, 1, 255, 256, 257, 1000}) {
            QTest::newRow(qPrintable(QString("%1 rows").arg(n))) << n << "u";
            QTest::newRow(qPrintable(QString("%1 rows, TEXT column").arg(n))) << n << "CAST(u AS CHAR(5000))";
        }
    }
    void largeResults() {
        QFETCH(int, filas);
        QFETCH(QString, texto);
        Db& db = env->db();
        db.exec("DELETE FROM textos");
        if (filas > 0)
            db.exec("INSERT INTO textos (u, l, n, i) SELECT REPEAT('Ñ', seq % 400), 'x', IF(seq % 2, NULL, seq / 4), "
                    "IF(seq % 3, seq, NULL) FROM seq_1_to_" + std::to_string(filas));
        const Recordset rs = db.query(("SELECT " + texto + " AS u, n, i FROM textos ORDER BY id").toStdString());
        QCOMPARE(rs.size(), filas);
        for (int k = 0; k < filas; ++k) {
            const int seq = k + 1;
            const Row& r = rs[k];
            QCOMPARE(r.text("u"), QString(seq % 400, QChar(0xD1)));
            QCOMPARE(r.value("n").isNull(), seq % 2 == 1);
            if (seq % 2 == 0) QCOMPARE(r.number("n"), seq / 4.0);
            QCOMPARE(r.value("i").isNull(), seq % 3 == 0);
            if (seq % 3) QCOMPARE(r.integer("i"), static_cast<long long>(seq));
        }
        // The statement is read again one row at a time by a plain query after it.
        QCOMPARE(db.query("SELECT count(*) AS c FROM textos").first().integer("c"), static_cast<long long>(filas));
    }

    // One statement run again and again keeps its parameters bound: a value
    // of another kind, a longer text, a shorter one and NULL each reach the
    // server as given, never what the placeholder held before.
    void aStatementRunAgainTakesEachNewValue() {
        Db& db = env->db();
        const QString largo = QString(350, QChar(0xD1)) + QStringLiteral("fin");
        const QList<std::pair<SqlValue, QString>> corridas{
            {"a", "[a]"},          {largo, "[" + largo + "]"}, {"bc", "[bc]"},   {SqlValue(), "[NULL]"},
            {7, "[7]"},            {2.5, "[2.5]"},             {"ñandú", "[ñandú]"}, {"", "[]"},
            {largo + "x", "[" + largo + "x]"}, {SqlValue(), "[NULL]"}, {"z", "[z]"},
        };
        for (const auto& [valor, esperado] : corridas)
            QCOMPARE(Row::toText(db.scalar("SELECT concat('[', coalesce(?, 'NULL'), ']')", {valor})), esperado);
    }

    void boundTextEqualsLiteral() {
        Db& db = env->db();
        db.exec("DELETE FROM textos");
        db.exec("INSERT INTO textos (u) VALUES ('NIÑO MIMADO')");
        QCOMPARE(db.query("SELECT id FROM textos WHERE u = ?", {"NIÑO MIMADO"}).size(), 1);
        db.exec("INSERT INTO textos (u) VALUES (?)", {"ÁGUILA REAL"});
        QCOMPARE(db.query("SELECT id FROM textos WHERE u = 'ÁGUILA REAL'").size(), 1);
    }

    void injectionIsJustData() {
        Db& db = env->db();
        db.exec("CREATE TABLE IF NOT EXISTS usuarios_copia LIKE usuarios");
        const QString evil = "x' or '1'='1";
        QCOMPARE(db.query("SELECT * FROM usuarios WHERE usuario = ?", {evil}).size(), 0);
        db.exec("INSERT INTO usuarios (usuario) VALUES (?)", {"'; drop table usuarios; --"});
        QCOMPARE(numberOf(db, "SELECT count(*) FROM usuarios"), 1.0);
        QCOMPARE(textOf(db, "SELECT usuario FROM usuarios"), QString("'; drop table usuarios; --"));
    }

    void fieldsByNameWhateverTheType() {
        Db& db = env->db();
        db.exec("DELETE FROM textos");
        db.exec("INSERT INTO textos (u, n, i) VALUES ('12,5', 12.5, 7), ('', NULL, NULL)");
        const Recordset rs =
            db.query("SELECT u, n, i, sum(n) AS total, count(*) AS cuantos FROM textos GROUP BY id ORDER BY id");
        QCOMPARE(rs.size(), 2);
        const Row& a = rs[0];
        QCOMPARE(a.number("n"), 12.5);
        QCOMPARE(a.text("n"), QString("12.5"));
        QCOMPARE(a.integer("i"), 7LL);
        QCOMPARE(a.text("i"), QString("7"));
        QCOMPARE(a.number("u"), 12.5);  // a number typed with a decimal comma
        QCOMPARE(a.number("TOTAL"), 12.5);
        QCOMPARE(a.integer("cuantos"), 1LL);
        const Row& b = rs[1];
        QVERIFY(b.isNull("n"));
        QVERIFY(b.isNull("i"));
        QVERIFY(!b.isNull("u"));
        QCOMPARE(b.text("n"), QString());
        QCOMPARE(b.number("n"), 0.0);
        QVERIFY_THROWS_EXCEPTION(DbError, b.text("no_existe"));
    }

    void nullParameters() {
        Db& db = env->db();
        db.exec("DELETE FROM textos");
        db.exec("INSERT INTO textos (u, n, i) VALUES (?, ?, ?)", {"nulos", SqlValue(), nullptr});
        const Row r = db.query("SELECT * FROM textos").first();
        QVERIFY(r.isNull("n"));
        QVERIFY(r.isNull("i"));
    }

    void editProfileWritesBack() {
        Db& db = env->db();
        db.exec("DELETE FROM textos");
        db.exec("INSERT INTO textos (u, n) VALUES ('uno', 1), ('dos', 2)");
        Recordset rs = db.query("SELECT * FROM textos ORDER BY id");
        rs.makeEditable(env->ctx.cnServidor, "textos");
        QCOMPARE(rs.profile(), Recordset::Profile::Edit);
        rs.setValue(0, "u", "UNO'S");
        rs.update(0);
        const int nuevo = rs.addNew();
        rs.setValue(nuevo, "u", "tres");
        rs.update(nuevo);
        QVERIFY(rs[nuevo].integer("id") > 0);           // the generated key came back
        QCOMPARE(rs[nuevo].text("l"), QString());         // and the column defaults
        rs.remove(1);
        const Recordset after = db.query("SELECT u FROM textos ORDER BY id");
        QCOMPARE(after.size(), 2);
        QCOMPARE(after[0].text("u"), QString("UNO'S"));
        QCOMPARE(after[1].text("u"), QString("tres"));
        Recordset readOnly = db.query("SELECT * FROM textos");
        QVERIFY_THROWS_EXCEPTION(DbError, readOnly.addNew());
    }

    void transactionRollsBackOnFailure() {
        Db& db = env->db();
        db.exec("DELETE FROM textos");
        QVERIFY_THROWS_EXCEPTION(DbError, db.inTransaction([&] {
            db.exec("INSERT INTO textos (u) VALUES ('a medias')");
            db.exec("INSERT INTO tabla_que_no_existe VALUES (1)");
        }));
        QCOMPARE(numberOf(db, "SELECT count(*) FROM textos"), 0.0);
        QVERIFY(!db.inTransactionNow());
        const long long id = db.inTransaction([&] {
            db.exec("INSERT INTO textos (u) VALUES ('completo')");
            return db.lastInsertId();
        });
        QVERIFY(id > 0);
        QCOMPARE(numberOf(db, "SELECT count(*) FROM textos"), 1.0);
    }

    void innerTransactionJoinsTheOuterOne() {
        Db& db = env->db();
        db.exec("DELETE FROM textos");
        QVERIFY_THROWS_EXCEPTION(DbError, db.inTransaction([&] {
            db.inTransaction([&] { db.exec("INSERT INTO textos (u) VALUES ('interna')"); });
            QVERIFY(db.inTransactionNow());  // the inner one did not commit
            db.exec("INSERT INTO tabla_que_no_existe VALUES (1)");
        }));
        QCOMPARE(numberOf(db, "SELECT count(*) FROM textos"), 0.0);
        QVERIFY(!db.inTransactionNow());
    }

    void rowLockMakesOthersWait() {
        // A row read FOR UPDATE inside a transaction is not changed by another
        // connection until the transaction ends.
        Db& db = env->db();
        db.exec("DELETE FROM textos");
        db.exec("INSERT INTO textos (id, u, n) VALUES (1, 'cupo', 10)");
        // On the same server: a cluster node's row locks hold on that node only.
        auto other = Db::open(db.connectionString());
        std::atomic<bool> otherDone{false};
        db.begin();
        QCOMPARE(db.query("SELECT n FROM textos WHERE id = 1 FOR UPDATE").first().number("n"), 10.0);
        std::thread t([&] {
            other->exec("UPDATE textos SET n = n - 3 WHERE id = 1");
            otherDone = true;
        });
        QTest::qWait(300);
        QVERIFY(!otherDone);
        db.exec("UPDATE textos SET n = n - 5 WHERE id = 1");
        db.commit();
        t.join();
        QVERIFY(otherDone);
        QCOMPARE(numberOf(db, "SELECT n FROM textos WHERE id = 1"), 2.0);
    }

    void aDeadlockVictimRetriesAndFinishes() {
        // Two transactions lock two rows in opposite orders; the server picks
        // one as its victim, which must retry and finish, never hang.
        Db& db = env->db();
        db.exec("DELETE FROM textos");
        db.exec("INSERT INTO textos (id, u, n) VALUES (1, 'a', 0), (2, 'b', 0)");
        for (int round = 0; round < 5; ++round) {
            // On the same server: on two cluster nodes the locks never meet
            // (the rows each one writes differ, so both commit).
            auto a = env->connect();
            auto b = Db::open(a->connectionString());
            std::atomic<int> locked{0};
            std::atomic<int> attemptsA{0}, attemptsB{0};
            auto side = [&](Db& d, int first, int second, std::atomic<int>& attempts) {
                d.inTransaction([&] {
                    ++attempts;
                    d.query("SELECT n FROM textos WHERE id = ? FOR UPDATE", {first});
                    ++locked;
                    while (attempts == 1 && locked < 2) std::this_thread::yield();
                    d.exec("UPDATE textos SET n = n + 1 WHERE id = ?", {second});
                });
            };
            std::atomic<int> done{0};
            std::thread ta([&] { side(*a, 1, 2, attemptsA); ++done; });
            std::thread tb([&] { side(*b, 2, 1, attemptsB); ++done; });
            QTRY_COMPARE_WITH_TIMEOUT(done.load(), 2, 20000);
            ta.join();
            tb.join();
            QCOMPARE(attemptsA + attemptsB, 3);
        }
        QCOMPARE(numberOf(db, "SELECT sum(n) FROM textos"), 10.0);
    }

    void errorsCarryTheServersCode() {
        try {
            env->db().exec("INSERT INTO textos (id, u) VALUES (1, 'x'), (1, 'y')");
            QFAIL("duplicate key accepted");
        } catch (const DbError& e) {
            QCOMPARE(e.nativeCode(), 1062L);
        }
    }

    void eightConnectionsEachGetTheirOwnTicketNumber() {
        env->db().exec("DELETE FROM ma_principal");
        constexpr int kThreads = 8, kEach = 60;
        std::vector<std::vector<std::pair<long long, QString>>> got(kThreads);
        std::vector<std::thread> threads;
        std::atomic<int> failures{0};
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([&, t] {
                try {
                    auto db = env->connect();
                    for (int k = 0; k < kEach; ++k) {
                        const QString tag = QString("T%1-%2").arg(t).arg(k);
                        db->exec("INSERT INTO `ma_principal` VALUES (NULL,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
                                 {1, 3, 2.0, "LOS PINOS", "07", "10:00:00", "2026-11-23", 0.0, 0, "0", tag, "S1",
                                  "0", "0", "0", "0", "0", "0", nullptr});
                        got[t].emplace_back(db->lastInsertId(), tag);
                    }
                } catch (...) {
                    ++failures;
                }
            });
        }
        for (auto& th : threads) th.join();
        QCOMPARE(failures.load(), 0);
        std::set<long long> numbers;
        for (int t = 0; t < kThreads; ++t) {
            for (const auto& [numero, tag] : got[t]) {
                numbers.insert(numero);
                // The number each connection got back is the row it inserted.
                QCOMPARE(textOf(env->db(), "SELECT nu_boleto FROM ma_principal WHERE numero = ?", {numero}), tag);
            }
        }
        QCOMPARE(int(numbers.size()), kThreads * kEach);
    }
};

QTEST_GUILESS_MAIN(TstDb)
#include "tst_db.moc"
