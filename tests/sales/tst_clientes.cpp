// Client accounts of the play entry window over the demo day: who finds
// which clients, new clients, plays and positive entries with their
// balances and slips, two booths debiting one client at once, and the
// statement (the report's rows) that the join keeps.
#include "core/Formato.h"
#include "core/Textos.h"
#include "sales/CuentasClientes.h"
#include "sales/Form_IngresoJugadas.h"
#include "support/TestEnv.h"

#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTcpServer>
#include <QtTest>
#include <atomic>
#include <thread>

using namespace hipico;
using namespace hipico::test;

namespace {

QStringList nombres(const Recordset& rs, const char* columna = "cliente") {
    QStringList out;
    for (const Row& r : rs) out << r.text(columna);
    return out;
}

}  // namespace

class TstClientes : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QTemporaryDir carpeta;

    std::unique_ptr<IngresoJugadas> entrar(const QString& usuario) {
        env->signIn(usuario);
        auto l = std::make_unique<IngresoJugadas>(env->ctx);
        env->ctx.session.confLocal.impresion = 0;  // the slips are checked as lines
        env->dialogs.clear();
        return l;
    }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("clientes", true);
        env->config.carpetaLocal = carpeta.path();
        env->ctx.config.carpetaLocal = carpeta.path();
    }

    void init() { env->loadDemo(); }

    void cleanup() { cerrarDialogos(env->dialogs); }

    void buscarPorNivel_data() {
        QTest::addColumn<QString>("quien");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QStringList>("clientes");
        const QString carlos = "CARLOS LÓPEZ", trebol = "INVERSIONES EL TRÉBOL", flaco = "JOSÉ \"EL FLACO\" PÉREZ",
                      ceiba = "AGROPECUARIA LA CEIBA", luisa = "LUISA MÁRQUEZ";
        QTest::newRow("administrator, every centre") << "admin" << "" << QStringList{ceiba, carlos, trebol, flaco, luisa};
        QTest::newRow("administrator, by name") << "admin" << "ceiba" << QStringList{ceiba};
        QTest::newRow("administrator, not by user name") << "admin" << "lmarquez" << QStringList{};
        QTest::newRow("manager, his centre") << "gerente" << "" << QStringList{ceiba, carlos, trebol, flaco};
        QTest::newRow("manager, by user name") << "gerente" << "clopez" << QStringList{carlos};
        QTest::newRow("manager, another centre's client") << "gerente" << "lmarquez" << QStringList{};
        QTest::newRow("booth, his own clients") << "taquilla1" << "" << QStringList{carlos, trebol, flaco};
        QTest::newRow("booth, another booth's client") << "taquilla1" << "ceiba" << QStringList{};
        QTest::newRow("the other booth") << "taquilla2" << "" << QStringList{ceiba};
        QTest::newRow("a quote in the text") << "taquilla1" << "\"EL" << QStringList{flaco};
        QTest::newRow("a percent sign is a character") << "taquilla1" << "%" << QStringList{};
    }

    void buscarPorNivel() {
        QFETCH(QString, quien);
        QFETCH(QString, texto);
        QFETCH(QStringList, clientes);
        auto l = entrar(quien);
        const auto filas = l->buscarClientes(texto);
        if (clientes.isEmpty()) {
            QVERIFY(!filas);
            QCOMPARE(env->dialogs.last().title, texto::TituloBusqueda);
            QCOMPARE(env->dialogs.last().text, kNoSeEncuentraCliente);
            return;
        }
        QVERIFY(filas);
        QCOMPARE(nombres(*filas), clientes);
    }

    void elegirSoloLosVisibles() {
        auto l = entrar("taquilla1");
        QVERIFY(!l->elegirCliente(4));  // created by the other booth
        QCOMPARE(env->dialogs.last().text, kNoSeEncuentraCliente);
        QVERIFY(!l->cliente());
        QVERIFY(l->elegirCliente(1));
        QCOMPARE(l->cliente()->nombre, QString("CARLOS LÓPEZ"));
        QCOMPARE(l->cliente()->saldo, 1500.0);
    }

    void nuevoCliente() {
        Db& db = env->db();
        auto l = entrar("taquilla1");
        const QStringList antes = foto(db, {"clientes"});
        env->dialogs.cancel();
        QVERIFY(!l->nuevoCliente({}));
        env->dialogs.type("   ");
        QVERIFY(!l->nuevoCliente({}));
        QCOMPARE(env->dialogs.last().title, texto::TituloInformacionSistema);
        QCOMPARE(env->dialogs.last().text, kNombreClienteVacio);
        env->dialogs.type("OTRO CARLOS");
        QVERIFY(!l->nuevoCliente({"", 1, "CLOPEZ"}));
        QCOMPARE(env->dialogs.last().text, QString("EL USUARIO DEL CLIENTE YA EXISTE EN ESTE CENTRO HIPICO"));
        QCOMPARE(foto(db, {"clientes"}), antes);
        env->dialogs.clear();

        env->dialogs.type("MARÍA D'ALESSANDRO");
        QVERIFY(l->nuevoCliente({"PAGA EN EFECTIVO", 2, "mdalessandro"}));
        QCOMPARE(env->dialogs.shown()[0].title, kTituloNuevoCliente);
        QCOMPARE(env->dialogs.shown()[0].text, kIngreseNombreCliente);
        QCOMPARE(env->dialogs.last().title, texto::TituloInformacionSistema);
        QCOMPARE(env->dialogs.last().text, texto::DatosAlmacenados);
        const Row c = db.query("select * from clientes where usuario='mdalessandro'").first();
        QCOMPARE(c.text("cliente"), QString("MARÍA D'ALESSANDRO"));
        QCOMPARE(c.text("ch"), QString("LOS PINOS"));
        QCOMPARE(c.integer("tipo_cliente"), 2LL);
        QCOMPARE(c.integer("id_usuario"), 11LL);
        QCOMPARE(c.text("fecha_ingreso"), QString("2026-11-23"));
        QCOMPARE(c.text("estatus"), QString("Activo"));
        QCOMPARE(l->cliente()->id, c.integer("id_cliente"));
        QCOMPARE(l->cliente()->saldo, 0.0);
        env->dialogs.clear();
    }

    // A play lowers the balance and may not pass it; a positive entry raises
    // it and asks its reason. Refusals write nothing.
    void movimientos_data() {
        QTest::addColumn<bool>("elegido");
        QTest::addColumn<bool>("positiva");
        QTest::addColumn<QString>("monto");
        QTest::addColumn<QString>("motivo");  // "-" cancels the question
        QTest::addColumn<QString>("texto");
        QTest::addColumn<double>("saldo");
        QTest::newRow("no client") << false << false << "10" << "" << kDebeSeleccionarCliente << 1500.0;
        QTest::newRow("amount not a number") << true << false << "1O" << "" << texto::MontoNoValido << 1500.0;
        QTest::newRow("zero") << true << false << "0" << "" << texto::MontoNoValido << 1500.0;
        QTest::newRow("a play above the balance")
            << true << false << "1500,01" << "" << texto::SinSaldoCliente + "Bs. 1.500,00" << 1500.0;
        QTest::newRow("a play of the whole balance") << true << false << "1500" << "" << kDatosGuardados << 0.0;
        QTest::newRow("a play") << true << false << "150,50" << "" << kDatosGuardados << 1349.5;
        QTest::newRow("a prize") << true << true << "500" << "PREMIO CARRERA 5" << kDatosGuardados << 2000.0;
        QTest::newRow("a prize without a reason") << true << true << "500" << " " << texto::SinMotivo << 1500.0;
        QTest::newRow("a prize, question cancelled") << true << true << "500" << "-" << "" << 1500.0;
    }

    // The balance the server keeps on the client's row follows every change
    // of the movements: one written, edited (its amount or its client) or deleted.
    void runningBalanceFollowsTheMovements_data() {
        QTest::addColumn<QString>("cambio");
        QTest::newRow("written") << "INSERT INTO jugadas_clientes (id_cliente, monto) VALUES (1, -25.5)";
        QTest::newRow("amount edited") << "UPDATE jugadas_clientes SET monto = monto + 10 WHERE id_cliente = 3";
        QTest::newRow("moved to another client") << "UPDATE jugadas_clientes SET id_cliente = 2 WHERE id_cliente = 1";
        QTest::newRow("deleted") << "DELETE FROM jugadas_clientes WHERE id_cliente = 3 AND monto < 0";
    }

    void runningBalanceFollowsTheMovements() {
        QFETCH(QString, cambio);
        Db& db = env->db();
        QVERIFY(db.exec(cambio.toStdString()) > 0);
        QCOMPARE(numberOf(db, "SELECT count(*) FROM clientes c WHERE abs(c.saldo - (SELECT coalesce(sum(monto), 0) FROM "
                              "jugadas_clientes j WHERE j.id_cliente = c.id_cliente)) > 0.001"),
                 0.0);
    }

    void movimientos() {
        QFETCH(bool, elegido);
        QFETCH(bool, positiva);
        QFETCH(QString, monto);
        QFETCH(QString, motivo);
        QFETCH(QString, texto);
        QFETCH(double, saldo);
        Db& db = env->db();
        auto l = entrar("taquilla1");
        if (elegido) QVERIFY(l->elegirCliente(1));
        const QStringList antes = foto(db, {"jugadas_clientes"});
        if (positiva) {
            if (motivo == "-")
                env->dialogs.cancel();
            else
                env->dialogs.type(motivo);
        }
        IngresoJugadas::Jugada j{positiva, "Tabla Fija", monto, positiva ? 3 : 2, positiva ? 4 : 1, "774411", "TF 6"};
        const bool hecho = l->procesar(j);
        QCOMPARE(hecho, texto == kDatosGuardados);
        QCOMPARE(saldoCliente(db, 1), saldo);
        QCOMPARE(numberOf(db, "SELECT saldo FROM clientes WHERE id_cliente = 1"), saldo);
        if (texto.isEmpty()) {
            QCOMPARE(foto(db, {"jugadas_clientes"}), antes);
            return;
        }
        QCOMPARE(env->dialogs.last().text, texto);
        if (!hecho) {
            QCOMPARE(env->dialogs.last().icon, Icon::Critical);
            QCOMPARE(foto(db, {"jugadas_clientes"}), antes);
            if (elegido) QCOMPARE(l->cliente()->saldo, saldo);
            return;
        }
        QCOMPARE(env->dialogs.last().title, kTituloRegistroJugada);
        QCOMPARE(l->cliente()->saldo, saldo);
        const Row m = db.query("select * from jugadas_clientes order by id_jugadas desc limit 1").first();
        double valor = 0;
        leerMonto(monto, valor);
        QCOMPARE(m.number("monto"), positiva ? valor : -valor);
        QCOMPARE(m.text("monto_tipo"), positiva ? kOperacionPositiva : QString("Tabla Fija"));
        QCOMPARE(m.integer("tipo_operacion"), positiva ? 3LL : 2LL);
        QCOMPARE(m.integer("id_banco"), positiva ? 4LL : 1LL);
        QCOMPARE(m.integer("id_usuario"), 11LL);
        QCOMPARE(m.text("nu_operacion"), QString("774411"));
        QCOMPARE(m.text("fecha"), QString("2026-11-23"));
        QCOMPARE(m.text("hora"), QString("10:30:00"));
        QCOMPARE(m.text("observacion"), positiva ? motivo : QString("TF 6"));
        QCOMPARE(l->ultimoRecibo()->lineas,
                 (QStringList{"   REGISTRO DE JUGADA", "CENTRO HIPICO LOS PINOS", "F: 23-11-2026", "H: 10:30:00",
                              "JUEGO: " + m.text("monto_tipo"), "MONTO JUGADO: " + formatoMoneda(valor),
                              "--------------------------------"}));
    }

    void reciboEnModoCrudo() {
        QCOMPARE(reciboJugada({"LOS PINOS", "2026-11-23", "10:30:00", "Ganadores", 25.5}, false).lineas,
                 (QStringList{"    REGISTRO DE JUGADA", "CH:LOS PINOS", "F: 23-11-2026", "H: 10:30:00",
                              "JUEGO: Ganadores", "MONTO JUGADO: Bs. 25,50", "--------------------------------"}));
    }

    // Eight booths debit one client of 100 at once, 30 each: three plays go
    // through, the balance ends at 10 and never goes below zero.
    void debitosConcurrentes() {
        Db& db = env->db();
        db.exec("INSERT INTO clientes (id_cliente, cliente, ch) VALUES (50, 'CONCURRENTE', 'LOS PINOS')");
        MovimientoCliente deposito{50, 100, "Positivo", 1, 11, 1, "", "2026-11-23", "09:00:00", "DEPOSITO"};
        QVERIFY(asentarMovimiento(db, deposito).escrito);
        std::atomic<int> escritos{0}, fallas{0};
        std::vector<std::thread> hilos;
        for (int i = 0; i < 8; ++i)
            hilos.emplace_back([&, i] {
                try {
                    auto propia = env->connect();
                    MovimientoCliente jugada{50, -30, "Ganadores", 2, 11, 1, QString::number(i), "2026-11-23",
                                             "10:00:00", ""};
                    if (asentarMovimiento(*propia, jugada).escrito) ++escritos;
                } catch (const DbError&) {
                    ++fallas;
                }
            });
        for (auto& h : hilos) h.join();
        QCOMPARE(fallas.load(), 0);
        QCOMPARE(escritos.load(), 3);
        QCOMPARE(saldoCliente(db, 50), 10.0);
        QCOMPARE(numberOf(db, "select count(*) from jugadas_clientes where id_cliente=50"), 4.0);
    }

    // The statement: the client's movements of the dates, by date, a movement
    // whose bank or type has no row left out; the report's table gets the
    // same rows.
    void estadoDeCuenta() {
        Db& db = env->db();
        db.exec("INSERT INTO jugadas_clientes (id_cliente, monto, monto_tipo, tipo_operacion, id_usuario, id_banco, "
                "fecha, hora) VALUES (3, -5, 'Ganadores', 2, 11, 99, '2026-11-22', '10:00:00'), "
                "(3, -6, 'Ganadores', 99, 11, 1, '2026-11-22', '10:00:00')");
        QCOMPARE(kReporteJugadasClientes, 39);
        auto l = entrar("taquilla1");
        QVERIFY(!l->estadoDeCuenta(QDate(2026, 11, 1), QDate(2026, 11, 30)));
        QCOMPARE(env->dialogs.last().text, kDebeSeleccionarCliente);
        QVERIFY(l->elegirCliente(3));
        QCOMPARE(l->cliente()->saldo, 579.0);
        QVERIFY(!l->estadoDeCuenta(QDate(2026, 11, 1), QDate(2026, 11, 2)));
        QCOMPARE(env->dialogs.last().title, texto::TituloBusqueda);
        QCOMPARE(env->dialogs.last().text, texto::SinRegistros);

        const auto filas = l->estadoDeCuenta(QDate(2026, 11, 16), QDate(2026, 11, 23));
        QVERIFY(filas);
        QStringList montos;
        for (const Row& r : *filas) montos << r.text("FECHA") + " " + r.text("MONTO");
        QCOMPARE(montos, (QStringList{"2026-11-16 800", "2026-11-17 -200", "2026-11-18 640", "2026-11-20 -150",
                                      "2026-11-22 -500"}));
        const Row& jugada = (*filas)[1];
        QCOMPARE(jugada.text("CLIENTE"), QString("JOSÉ \"EL FLACO\" PÉREZ"));
        QCOMPARE(jugada.text("TIPO"), QString("JUGADA"));
        QCOMPARE(jugada.text("OPERACION"), QString("Ganadores"));
        QCOMPARE(jugada.text("USUARIO"), QString("TAQUILLA UNO LOS PINOS"));
        QCOMPARE((*filas)[4].text("BANCO"), QString("BANESCO"));

        const Recordset rpt = env->local().query("select * from rpt_jugadas_clientes order by id_jugadas");
        QCOMPARE(rpt.size(), 5);
        QCOMPARE(rpt[1].number("monto"), -200.0);
        QCOMPARE(rpt[1].text("monto_tipo"), QString("Ganadores"));
        QCOMPARE(rpt[1].text("tipo_operacion"), QString("JUGADA"));
        QCOMPARE(rpt[1].text("fecha"), QString("2026-11-17"));
        QCOMPARE(rpt[1].text("cliente"), QString("JOSÉ \"EL FLACO\" PÉREZ"));
        QCOMPARE(rpt[1].integer("nu_operacion"), 7111701LL);
        QCOMPARE(rpt[1].text("motivo"), QString("CARRERA 3 CABAL"));
        QCOMPARE(rpt[4].text("banco"), QString("BANESCO"));
        QCOMPARE(rpt[2].integer("nu_operacion"), 0LL);
        env->dialogs.clear();
    }

    // The window from the keyboard: the own clients listed, a search that
    // finds one client chooses it and shows its statement, a play moves the
    // balance shown.
    void ventana() {
        env->signIn("taquilla1");
        env->dialogs.clear();
        Form_IngresoJugadas w(env->ctx);
        env->ctx.session.confLocal.impresion = 0;
        w.show();
        QApplication::processEvents();
        auto* clientes = w.findChild<QTableView*>("Grilla_Clientes");
        auto* estado = w.findChild<QTableView*>("Grilla_Estado");
        QCOMPARE(clientes->model()->rowCount(), 3);
        QTest::keyClicks(w.findChild<QLineEdit*>("Text_Bus2"), "flaco");
        QTest::keyClick(w.findChild<QLineEdit*>("Text_Bus2"), Qt::Key_Return);
        QCOMPARE(w.findChild<QLabel*>("Label_Saldo")->text(), QString("SALDO: Bs. 590,00"));
        QCOMPARE(estado->model()->rowCount(), 5);
        QCOMPARE(QApplication::focusWidget(), w.findChild<QWidget*>("Text_Monto"));
        QTest::keyClicks(w.findChild<QLineEdit*>("Text_Monto"), "90");
        w.Bton_Procesar_Click();
        QCOMPARE(env->dialogs.last().text, kDatosGuardados);
        QCOMPARE(w.findChild<QLabel*>("Label_Saldo")->text(), QString("SALDO: Bs. 500,00"));
        QCOMPARE(estado->model()->rowCount(), 6);
        env->dialogs.clear();

        // The statement on the report window, from the rows just listed.
        QTest::mouseClick(w.findChild<QWidget*>("Command_Imprimir"), Qt::LeftButton);
        QWidget* reporte = nullptr;
        for (QWidget* t : QApplication::topLevelWidgets())
            if (t->isVisible() && t->windowTitle() == "REPORTE JUGADAS DEL CLIENTE") reporte = t;
        QVERIFY(reporte);
        delete reporte;
        QCOMPARE(numberOf(env->local(), "SELECT count(*) FROM rpt_jugadas_clientes"), 6.0);
        QCOMPARE(env->dialogs.count(), 0);
    }

    // The public address is looked up when the window opens; a failed
    // lookup is told with the window's own words.
    void direccionPublica() {
        QTcpServer cerrado;
        cerrado.listen(QHostAddress::LocalHost, 0);
        const QString url = QString("http://127.0.0.1:%1/ip").arg(cerrado.serverPort());
        cerrado.close();
        env->signIn("taquilla1");
        env->dialogs.clear();
        env->ctx.config.serviciosIp = url + " " + url + " " + url;
        Form_IngresoJugadas w(env->ctx);
        w.show();
        w.esperarIp();
        env->ctx.config.serviciosIp.clear();
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().title, QString("Ups!"));
        QCOMPARE(env->dialogs.last().text, QString("Checkee su conexion a internet por favor, parece que esta fallando."));
        QCOMPARE(env->dialogs.last().icon, Icon::Critical);
        env->dialogs.clear();
    }
};

QTEST_MAIN(TstClientes)
#include "tst_clientes.moc"
