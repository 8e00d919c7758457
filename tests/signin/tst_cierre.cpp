// The general configuration and the close of the day against the real
// server: settings round trip and every refusal, group parameters copied to a
// centre, the close of a seeded day (copies, hand-computed totals, the next
// day), a second close of the same day, open pools, booths selling while the
// day closes, a failure half-way, a payment after the close, and the next day.
#include "support/Boletos.h"
#include "sales/BoothFixture.h"
#include "sales/VentaGanadores.h"
#include "core/Guardia.h"
#include "signin/CierreDia.h"
#include "signin/ConfiguracionGeneral.h"
#include "core/Connections.h"
#include "schema/Demo.h"
#include "schema/SchemaLoader.h"
#include "support/ServidorPrivado.h"
#include "support/TestEnv.h"

#include <QProcess>
#include <QSettings>
#include <QtTest>
#include <atomic>
#include <thread>

using namespace hipico;
using namespace hipico::test;

class TstCierre : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QString hoy, manana;

    Db& db() { return env->db(); }

    // Every row of the tables, as text, to see what changed.
    QStringList foto(std::initializer_list<const char*> tablas) {
        QStringList out;
        for (const char* t : tablas)
            for (const Row& r : db().query(std::string("SELECT * FROM ") + t + " ORDER BY 1,2")) {
                QStringList campos;
                for (const QVariant& v : r.values()) campos << Row::toText(v);
                out << QString(t) + ":" + campos.join('|');
            }
        return out;
    }
    QStringList fotoDia() {
        return foto({"configuracion", "carreras", "ventas_ganadores", "ventas_tf", "ventas_mc",
                     "ventas_ganadores_general", "ventas_tf_general", "ventas_mc_general", "ma_principal", "cierres_dia"});
    }
    // A day's ticket rows of a day table or its copy, without the copy's own key.
    QStringList boletos(const char* tabla, const QString& fecha, bool copia) {
        QStringList out;
        for (const Row& r : db().query(std::string("SELECT * FROM ") + tabla + " WHERE fecha = ? ORDER BY numero", {fecha})) {
            QStringList campos;
            for (int i = copia ? 1 : 0; i < r.values().size(); ++i) campos << Row::toText(r.at(i));
            out << campos.join('|');
        }
        return out;
    }
    void tablaFija(const QString& grupo, double monto, int estatus, double cobrado) {
        db().exec("INSERT INTO tablafija (carrera, caballo, tablas, monto, ch, grupo, hora, fecha, cobrado, estatus, "
                  "nu_boleto) VALUES (1, 2, 1, ?, 'LOS PINOS', ?, '10:00:00', ?, ?, ?, concat('2', numero))",
                  {monto, grupo, hoy, cobrado, estatus});
    }
    void macuare(const QString& grupo, double monto) {
        db().exec("INSERT INTO macuares (boleto, fecha, hora, monto, veces, grupo, taquilla, combinacion) "
                  "VALUES ('5000', ?, '10:00:00', ?, 1, ?, 'MARACAY', '1-2-3-4-5-6-7')",
                  {hoy, monto, grupo});
    }
    QString totales(const char* tabla, const QString& grupo) {
        const Row r = db().query(std::string("SELECT * FROM ") + tabla + " WHERE grupo = ? AND fecha = ?", {grupo, hoy}).first();
        return QString("%1/%2/%3/%4").arg(r.number("venta")).arg(r.number("premios")).arg(r.number("monto_porpagar"))
            .arg(r.number("saldo"));
    }
    // The demo day: group 07 sold 15 units in five tickets (one paid winner,
    // one winner due, one refund due, one refund paid) and voided one; 08
    // sold 10 units; fixed table and Macuare one group each.
    void sembrar() {
        const QDate d = env->clock.today();
        venderBoleto(db(), d, 1, 1, 5, "07", "LOS PINOS");
        venderBoleto(db(), d, 1, 2, 2, "07", "LOS PINOS", 1, 25);
        venderBoleto(db(), d, 1, 3, 4, "07", "LOS PINOS", 2, 40);
        venderBoleto(db(), d, 1, 4, 3, "07", "LOS PINOS", 4, 30);
        venderBoleto(db(), d, 1, 5, 1, "07", "LOS PINOS", 3, 10);
        const long long anulado = venderBoleto(db(), d, 1, 6, 9, "07", "LOS PINOS");
        db().exec("DELETE FROM ma_principal WHERE numero = ?", {anulado});
        venderBoleto(db(), d, 1, 1, 10, "08", "LOS PINOS");
        tablaFija("07", 50, 0, 0);
        tablaFija("07", 25, 2, 100);
        macuare("12", 30);
    }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("cierre");
        hoy = fechaSql(env->clock.today());
        manana = fechaSql(env->clock.today().addDays(1));
    }
    void init() {
        env->loadDemo();
        env->signIn("admin");
        env->dialogs.clear();
    }
    void cleanup() { QVERIFY2(!env->dialogs.answersLeft(), "a scripted answer was never used"); }

    void settingsRoundTrip() {
        ConfiguracionGeneral c(env->ctx);
        auto v = c.cargar();
        QVERIFY(v);
        QCOMPARE(v->value("fecha"), fechaVista(hoy));
        QCOMPARE(v->value("valor_ganador"), QString("10"));
        (*v)["valor_ganador"] = "12,5";
        (*v)["mensaje"] = "CIERRE A LAS 10 PM";
        (*v)["fecha"] = fechaVista(manana);
        (*v)["venta_tf"] = "1";
        QCOMPARE(v->value("no_anular_cerrada"), QString("0"));  // off unless switched on
        (*v)["no_anular_cerrada"] = "1";
        QVERIFY(c.guardar(*v));
        QCOMPARE(env->dialogs.last().text, QString("Los cambios se han realizado con exito"));
        QCOMPARE(numberOf(db(), "SELECT valor_ganador FROM configuracion"), 12.5);
        QCOMPARE(textOf(db(), "SELECT fecha FROM configuracion"), manana);
        QCOMPARE(numberOf(db(), "SELECT no_anular_cerrada FROM configuracion"), 1.0);
        QCOMPARE(env->ctx.session.fecha, manana);
        QCOMPARE(*c.cargar(), *v);
    }

    void settingRefused_data() {
        QTest::addColumn<QString>("campo");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<QString>("mensaje");
        const QString valor = "EL CAMPO VALOR DEL GANADOR NO ES VALIDO: DEBE SER UN NUMERO ENTRE 0,01 Y 1000000";
        QTest::newRow("empty") << "valor_ganador" << "" << valor;
        QTest::newRow("letters") << "valor_ganador" << "diez" << valor;
        QTest::newRow("negative") << "valor_ganador" << "-5" << valor;
        QTest::newRow("zero") << "valor_ganador" << "0" << valor;
        QTest::newRow("huge") << "apuesta_max_win" << "99999999999"
                              << "EL CAMPO APUESTA MAXIMA DE GANADORES NO ES VALIDO: DEBE SER UN NUMERO ENTRE 0 Y 1000000000";
        QTest::newRow("race") << "carrera" << "100"
                              << "EL CAMPO CARRERA ACTUAL NO ES VALIDO: DEBE SER UN NUMERO ENTERO ENTRE 0 Y 99";
        QTest::newRow("race decimal") << "carrera" << "2,5"
                                      << "EL CAMPO CARRERA ACTUAL NO ES VALIDO: DEBE SER UN NUMERO ENTERO ENTRE 0 Y 99";
        QTest::newRow("date") << "fecha" << "31-02-2026"
                              << "EL CAMPO FECHA DE TRABAJO NO ES UNA FECHA VALIDA (DD-MM-AAAA)";
        QTest::newRow("long text") << "mensaje" << QString(256, 'A')
                                   << "EL CAMPO MENSAJE DEL ADMINISTRADOR ES DEMASIADO LARGO: MAXIMO 255 CARACTERES";
        QTest::newRow("switch") << "venta_tf" << "2" << "EL CAMPO VENTA DE TABLA FIJA ABIERTA NO ES VALIDO";
        QTest::newRow("choice") << "tipo_pantalla" << "5" << "EL CAMPO PANTALLA DE TABLA FIJA NO ES VALIDO";
    }
    void settingRefused() {
        QFETCH(QString, campo);
        QFETCH(QString, valor);
        QFETCH(QString, mensaje);
        ConfiguracionGeneral c(env->ctx);
        auto v = *c.cargar();
        (*&v)["mensaje"] = "OTRO MENSAJE";  // a valid change beside the wrong one is not written either
        v[campo] = valor;
        const QStringList antes = foto({"configuracion"});
        QVERIFY(!c.guardar(v));
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().title, QString("VERIFIQUE E INTENTE DE NUEVO"));
        QCOMPARE(env->dialogs.last().text, mensaje);
        QCOMPARE(foto({"configuracion"}), antes);
    }

    void groupParametersForOneGroupOrTheCentre() {
        ConfiguracionGeneral c(env->ctx);
        auto v = *c.cargarGrupo("07");
        v["duracionboletos"] = "5";
        v["min_bs"] = "20";
        v["no_aut_3t"] = "2";
        QVERIFY(c.guardarGrupo("07", v, true));
        QCOMPARE(env->dialogs.last().text, QString("LOS PARAMETROS SE COPIARON A TODOS LOS GRUPOS DE LOS PINOS"));
        for (const char* g : {"07", "08"})
            QCOMPARE(textOf(db(), "SELECT concat(duracionboletos,'/',min_bs,'/',no_aut_3t) FROM grupos WHERE grupo=?", {g}),
                     QString("5/20/2"));
        QCOMPARE(textOf(db(), "SELECT concat(duracionboletos,'/',min_bs) FROM grupos WHERE grupo='12'"), QString("3/10"));
        QCOMPARE(env->ctx.session.duracionBoletos, 5);
        v["duracionboletos"] = "9";
        QVERIFY(c.guardarGrupo("12", v, false));
        QCOMPARE(numberOf(db(), "SELECT duracionboletos FROM grupos WHERE grupo='12'"), 9.0);
        QCOMPARE(numberOf(db(), "SELECT duracionboletos FROM grupos WHERE grupo='15'"), 3.0);
        v["duracionboletos"] = "0";
        QVERIFY(!c.guardarGrupo("12", v, false));
        QCOMPARE(env->dialogs.last().text,
                 QString("EL CAMPO DIAS DE VALIDEZ DEL BOLETO NO ES VALIDO: DEBE SER UN NUMERO ENTERO ENTRE 1 Y 365"));
        QCOMPARE(numberOf(db(), "SELECT duracionboletos FROM grupos WHERE grupo='12'"), 9.0);
    }

    void purgeOfKeptTicketsCountsWhatWent() {
        const QDate viejo = env->clock.today().addDays(-40);
        for (const char* t : {"ventas_tf", "ventas_mc", "bitacora", "bitacora_tf"})
            db().exec(std::string("INSERT INTO ") + t + " (fecha) VALUES (?), (?)", {fechaSql(viejo), hoy});
        db().exec("INSERT INTO ventas_ganadores (fecha) VALUES (?), (?)", {fechaSql(viejo), hoy});
        ConfiguracionGeneral c(env->ctx);
        env->dialogs.no();
        QVERIFY(!c.depurar(fechaVista(viejo.addDays(1))));
        env->dialogs.yes();
        QCOMPARE(c.depurar(fechaVista(viejo.addDays(1))), std::optional<long long>(5));
        QCOMPARE(env->dialogs.last().text, QString("SE ELIMINARON 5 REGISTROS"));
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM ventas_tf"), 1.0);
        QVERIFY(!c.depurar("40-01-2026"));
        QCOMPARE(env->dialogs.last().text, QString("LA FECHA NO ES VALIDA (DD-MM-AAAA)"));
    }

    void closeOfASeededDay() {
        sembrar();
        const QStringList ganadores = boletos("ma_principal", hoy, false);
        const QStringList tf = boletos("tablafija", hoy, false);
        CierreDia cierre(env->ctx);
        const auto s = cierre.cerrar(env->clock.today().addDays(1), true);
        QVERIFY2(s.hecho, qPrintable(s.negado));
        QCOMPARE(s.hecho->ganadores, 6LL);
        QCOMPARE(s.hecho->tablaFija, 2LL);
        QCOMPARE(s.hecho->macuare, 1LL);
        // The copies are the day's tickets; the day tables keep them (still payable).
        QCOMPARE(boletos("ventas_ganadores", hoy, true), ganadores);
        QCOMPARE(boletos("ventas_tf", hoy, true), tf);
        QCOMPARE(boletos("ma_principal", hoy, false), ganadores);
        // sold / paid / due / balance, by hand: 15 units x 10; paid 40 + 10; due 25 + 30.
        QCOMPARE(totales("ventas_ganadores_general", "07"), QString("150/50/55/45"));
        QCOMPARE(totales("ventas_ganadores_general", "08"), QString("100/0/0/100"));
        QCOMPARE(totales("ventas_ganadores_general", "15"), QString("0/0/0/0"));
        QCOMPARE(totales("ventas_tf_general", "07"), QString("75/100/0/-25"));
        QCOMPARE(totales("ventas_mc_general", "12"), QString("30/0/0/30"));
        // The next day: every sale closed, the day's pools closed.
        QCOMPARE(textOf(db(), "SELECT concat(fecha,'/',venta_ganadores,venta_remate,venta_macuare,venta_tf) "
                              "FROM configuracion"),
                 manana + "/0000");
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM carreras WHERE fecha=? AND (venta<>0 OR venta_tf<>0 OR "
                                "venta_rm<>0 OR venta_mc<>0)", {hoy}),
                 0.0);
        QCOMPARE(env->ctx.session.fecha, manana);
        QCOMPARE(textOf(db(), "SELECT concat(usuario,'/',fecha_nueva) FROM cierres_dia WHERE fecha=?", {hoy}),
                 "admin/" + manana);
    }

    void closingTheSameDayAgainReplacesItsRows() {
        sembrar();
        CierreDia cierre(env->ctx);
        QVERIFY(cierre.cerrar(env->clock.today().addDays(1), true).hecho);
        const QStringList despues = foto({"ventas_ganadores", "ventas_tf", "ventas_mc", "ventas_ganadores_general",
                                          "ventas_tf_general", "ventas_mc_general"});
        db().exec("UPDATE configuracion SET fecha = ?", {hoy});
        QVERIFY(cierre.cerrar(env->clock.today().addDays(1), true).hecho);
        auto sinClave = [](QStringList filas) {
            for (QString& f : filas) f = f.section(':', 0, 0) + ":" + f.section(':', 1).section('|', 1);
            return filas;
        };
        QCOMPARE(sinClave(foto({"ventas_ganadores", "ventas_tf", "ventas_mc", "ventas_ganadores_general",
                                "ventas_tf_general", "ventas_mc_general"})),
                 sinClave(despues));
    }

    void openPoolsAreListedAndRefused() {
        CierreDia cierre(env->ctx);
        QCOMPARE(cierre.poolsAbiertos(hoy), QStringList({"LA RINCONADA CARRERA 1: GANADORES, REMATE, TABLA FIJA",
                                                         "SANTA RITA CARRERA 1: GANADORES, REMATE, TABLA FIJA"}));
        const QStringList antes = fotoDia();
        const auto s = cierre.cerrar(env->clock.today().addDays(1), false);
        QVERIFY(!s.hecho);
        QVERIFY(s.negado.startsWith("HAY CARRERAS ABIERTAS:\nLA RINCONADA CARRERA 1"));
        QCOMPARE(fotoDia(), antes);
    }

    void theWindowsCommandAsksAndTells_data() {
        QTest::addColumn<QString>("siguiente");
        QTest::addColumn<QString>("mensaje");
        const QDate d = QDate(2026, 11, 23);
        QTest::newRow("tomorrow") << fechaVista(d.addDays(1))
                                  << "DIA CERRADO CON EXITO. BOLETOS GUARDADOS: GANADORES 0, TABLA FIJA 0, MACUARE 0. "
                                     "NUEVA FECHA DE TRABAJO: " + fechaVista(d.addDays(1));
        QTest::newRow("same day") << fechaVista(d) << "LA NUEVA FECHA DE TRABAJO DEBE SER POSTERIOR AL DIA QUE SE CIERRA";
        QTest::newRow("not a date") << "32-11-2026" << "LA FECHA NO ES VALIDA (DD-MM-AAAA)";
    }
    void theWindowsCommandAsksAndTells() {
        QFETCH(QString, siguiente);
        QFETCH(QString, mensaje);
        const bool valida = mensaje.startsWith("DIA CERRADO");
        env->dialogs.yes().type(siguiente);
        if (valida) env->dialogs.yes();
        CierreDia cierre(env->ctx);
        QCOMPARE(cierre.Cerrar(), valida);
        QVERIFY(env->dialogs.shown()[0].text.startsWith("HAY CARRERAS ABIERTAS EL DIA " + fechaVista(hoy)));
        QCOMPARE(env->dialogs.shown()[1].text, QString("INGRESE LA PROXIMA FECHA DE TRABAJO (DD-MM-AAAA)"));
        QCOMPARE(env->dialogs.last().text, mensaje);
        QCOMPARE(textOf(db(), "SELECT fecha FROM configuracion"), valida ? manana : hoy);
    }

    void theCommandLineClosesTheDay() {
        QTemporaryDir carpeta;
        const QString ini = carpeta.filePath("hipico.ini");
        {
            QSettings s(ini, QSettings::IniFormat);
            s.setValue("servidor/host", "localhost");
            s.setValue("servidor/usuario", env->config.servidor.usuario);
            s.setValue("servidor/clave", env->config.servidor.clave);
            s.setValue("servidor/base", env->config.servidor.base);
            s.setValue("servidor/puerto", env->config.servidor.puerto);
        }
        auto correr = [&](QStringList extra) {
            QProcess p;
            p.start(qEnvironmentVariable("HIPICO_BUILD_DIR") + "/src/app/hipico-bd",
                    QStringList{"--config", ini, "cerrar-dia"} + extra);
            p.waitForFinished(60000);
            return qMakePair(p.exitCode(), QString::fromUtf8(p.readAllStandardOutput() + p.readAllStandardError()));
        };
        // The program runs on the real clock: the working day is today.
        const QString hoy = fechaSql(QDate::currentDate()), manana = fechaSql(QDate::currentDate().addDays(1));
        db().exec("UPDATE configuracion SET fecha = ?", {hoy});
        const QString pasado = fechaSql(QDate::currentDate().addDays(-1));
        QCOMPARE(correr({"--fecha", pasado}),
                 qMakePair(3, QString("hipico-bd: LA NUEVA FECHA DE TRABAJO DEBE SER POSTERIOR AL DIA QUE SE CIERRA\n")));
        QCOMPARE(correr({"--fecha", "mañana"}).first, 2);
        QCOMPARE(textOf(db(), "SELECT fecha FROM configuracion"), hoy);
        const auto bien = correr({"--fecha", manana});
        QCOMPARE(bien.first, 0);
        QCOMPARE(bien.second, "DIA " + hoy + " CERRADO: GANADORES 0, TABLA FIJA 0, MACUARE 0. NUEVA FECHA DE TRABAJO: " +
                                  manana + "\n");
        QCOMPARE(textOf(db(), "SELECT fecha FROM configuracion"), manana);
    }

    void aFailureHalfWayChangesNothing() {
        sembrar();
        const QStringList antes = fotoDia();
        // The last table the close writes is missing: everything before it is undone.
        db().exec("RENAME TABLE ventas_mc_general TO ventas_mc_general_fuera");
        CierreDia cierre(env->ctx);
        QVERIFY(!proteger(env->ctx, "prueba", [&] { return cierre.cerrar(env->clock.today().addDays(1), true).hecho.has_value(); }));
        QCOMPARE(env->dialogs.last().title, QString("ERROR DE BASE DE DATOS"));
        db().exec("RENAME TABLE ventas_mc_general_fuera TO ventas_mc_general");
        QCOMPARE(fotoDia(), antes);
        QVERIFY(cierre.cerrar(env->clock.today().addDays(1), true).hecho);
    }

    void aServerKilledDuringTheCloseLeavesTheDayOpen() {
        ServidorPrivado servidor("cierre", 51);
        QVERIFY(servidor.arrancar());
        const Config c = servidor.config("t_cierre_propio");
        crearEsquema(c.servidor, scriptCentral(), true);
        Context ctx(c, env->dialogs, env->clock);
        ctx.cnServidor = Db::open(cadenaServidor(c));
        Db& propio = *ctx.cnServidor;
        cargarDemo(propio, env->clock.today());
        ctx.session = env->ctx.session;
        // A day big enough that the close is still running when the server dies.
        venderBoleto(propio, env->clock.today(), 1, 1, 1, "07", "LOS PINOS");
        for (int i = 0; i < 17; ++i)
            propio.exec("INSERT INTO ma_principal (carrera, caballo, ganadores, ch, grupo, hora, fecha, nu_boleto) "
                        "SELECT carrera, caballo, ganadores, ch, grupo, hora, fecha, nu_boleto FROM ma_principal");
        const double boletos = Row::toNumber(propio.scalar("SELECT count(*) FROM ma_principal"));
        std::atomic<bool> termino{false};
        std::thread cierre([&] {
            try {
                CierreDia(ctx).cerrar(env->clock.today().addDays(1), true);
            } catch (const DbError&) {
            }
            termino = true;
        });
        QTest::qWait(300);
        QVERIFY(!termino);
        servidor.matar();
        cierre.join();
        QVERIFY(servidor.arrancar());
        QCOMPARE(Row::toText(propio.scalar("SELECT fecha FROM configuracion")), hoy);
        QCOMPARE(Row::toNumber(propio.scalar("SELECT count(*) FROM ventas_ganadores")), 0.0);
        QCOMPARE(Row::toNumber(propio.scalar("SELECT count(*) FROM carreras WHERE fecha=? AND venta=1", {hoy})), 17.0);
        // Running it again finishes it.
        const auto s = CierreDia(ctx).cerrar(env->clock.today().addDays(1), true);
        QVERIFY(s.hecho);
        QCOMPARE(double(s.hecho->ganadores), boletos);
        QCOMPARE(Row::toText(propio.scalar("SELECT fecha FROM configuracion")), manana);
    }

    void boothsSellingWhileTheDayClosesLoseNothing() {
        env->signIn("taquilla1");
        Session taquilla = env->ctx.session;
        taquilla.confLocal.impresion = 0;
        env->signIn("admin");
        std::atomic<bool> fin{false};
        std::atomic<int> vendidos{0};
        std::vector<std::thread> hilos;
        for (int t = 0; t < 3; ++t)
            hilos.emplace_back([&] {
                ScriptedDialogs d;
                FixedClock reloj(env->clock.now());
                Context ctx(env->config, d, reloj);
                ctx.cnServidor = env->connect();
                ctx.session = taquilla;
                VentaGanadores v(ctx);
                while (!fin)
                    if (v.procesarVenta("1", "3", "1").resultado == VentaGanadores::Resultado::Vendido) ++vendidos;
            });
        QTRY_VERIFY(vendidos > 20);
        CierreDia cierre(env->ctx);
        QVERIFY(cierre.cerrar(env->clock.today().addDays(1), true).hecho);
        const int alCerrar = vendidos;
        QTest::qWait(200);
        fin = true;
        for (auto& h : hilos) h.join();
        // Every ticket sold is in the day and in the copy; none after the close.
        // On one server the close waited for the sales in flight, so none was
        // told after it; on a cluster the close runs on another node and a
        // sale committed before it may hear so a moment after it: the copy
        // tells (a ticket committed after the close would not be in it).
        if (qEnvironmentVariableIsEmpty("HIPICO_DB_PORTS")) QCOMPARE(vendidos.load(), alCerrar);
        const int total = vendidos;
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM ma_principal WHERE fecha=?", {hoy}), double(total));
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM ventas_ganadores WHERE fecha=?", {hoy}), double(total));
        QCOMPARE(numberOf(db(), "SELECT venta FROM ventas_ganadores_general WHERE grupo='07' AND fecha=?", {hoy}),
                 total * 10.0);
    }

    void afterTheCloseTheOldDayStillPaysAndTheNextDaySells() {
        sembrar();
        liquidar(db(), hoy, 1, 2, 12.5);
        QVERIFY(CierreDia(env->ctx).cerrar(env->clock.today().addDays(1), true).hecho);
        // Tomorrow's card, open for sale.
        db().exec("INSERT INTO carreras (fecha, carrera, id_hipodromo, caballo, nu_caballo, venta) SELECT ?, carrera, "
                  "id_hipodromo, caballo, nu_caballo, 1 FROM carreras WHERE fecha = ?",
                  {manana, hoy});
        env->signIn("taquilla1");
        env->ctx.session.confLocal.impresion = 0;
        env->dialogs.clear();
        QCOMPARE(env->ctx.session.fecha, manana);
        VentaGanadores v(env->ctx);
        const QString devolucion = textOf(db(), "SELECT nu_boleto FROM ma_principal WHERE estatus = 4");
        QVERIFY(v.buscarBoletoCobro(devolucion).pagable);
        QVERIFY(v.cobrarBoleto());
        QCOMPARE(textOf(db(), "SELECT estatus FROM ma_principal WHERE nu_boleto = ?", {devolucion}), QString("3"));
        QCOMPARE(textOf(db(), "SELECT estatus FROM ventas_ganadores WHERE nu_boleto = ?", {devolucion}), QString("3"));
        // The day's row moves as the payment statement moves it.
        QCOMPARE(totales("ventas_ganadores_general", "07"), QString("150/80/25/15"));
        const QString ganador = textOf(db(), "SELECT nu_boleto FROM ma_principal WHERE estatus = 1");
        QVERIFY(!v.buscarBoletoCobro(ganador).pagable);
        QCOMPARE(env->dialogs.last().text,
                 QString("ATENCION ESTE BOLETO ES DE UN DIA ANTERIOR, DEBE PEDIR EL DINERO A LA ADMINISTRACION"));
        const auto venta = v.procesarVenta("1", "3", "2");
        QCOMPARE(int(venta.resultado), int(VentaGanadores::Resultado::Vendido));
        QCOMPARE(venta.boleto.codigo, codigoBoleto("07", env->clock.today().addDays(1), venta.boleto.numero));
        QCOMPARE(venta.boleto.fecha, manana);
    }

    void oldDaysLeaveTheDayTablesOnceClosedAndExpired() {
        const QDate d = env->clock.today();
        const long long cerrado = venderBoleto(db(), d.addDays(-10), 1, 1, 1, "07", "LOS PINOS");
        const long long sinCerrar = venderBoleto(db(), d.addDays(-9), 1, 1, 1, "07", "LOS PINOS");
        db().exec("INSERT INTO ventas_ganadores SELECT NULL, m.* FROM ma_principal m WHERE numero = ?", {cerrado});
        db().exec("INSERT INTO cierres_dia (fecha) VALUES (?)", {fechaSql(d.addDays(-10))});
        const auto s = CierreDia(env->ctx).cerrar(d.addDays(1), true);
        QCOMPARE(s.hecho->retirados, 1LL);
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM ma_principal WHERE numero=?", {cerrado}), 0.0);
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM ventas_ganadores WHERE numero=?", {cerrado}), 1.0);
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM ma_principal WHERE numero=?", {sinCerrar}), 1.0);
    }
};

QTEST_GUILESS_MAIN(TstCierre)
#include "tst_cierre.moc"
