// Beside the boards: the auction's winner for one centre or all, the desk's
// auction cells and winner change, the second place of an invalidated
// winner, the auction result of a day written by the day's close, and the
// auction report by dates over a seeded week.
#include "schema/Escritores.h"
#include "signin/CierreDia.h"
#include "subastas/AdministracionSubasta.h"
#include "subastas/ImpresosSubasta.h"
#include "subastas/RptSubastaFechas.h"
#include "subastas/Subasta.h"
#include "support/Boletos.h"
#include "support/TestEnv.h"

#include <QtTest>

using namespace hipico;
using namespace hipico::test;

class TstAdministracionSubasta : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QString fecha;  // the working day, today
    QDate hoy;

    Db& db() { return env->db(); }
    ScriptedDialogs& dlg() { return env->dialogs; }
    double valor(const QString& columna, int caballo, const QString& ch = "LOS PINOS") {
        return numberOf(db(),
                        ("SELECT " + columna + " FROM carreras_remate WHERE carrera = 1 AND ch = ? AND nu_caballo = ?")
                            .toStdString(),
                        {ch, caballo});
    }
    void esperar(const QString& titulo, const QString& texto) {
        QVERIFY(dlg().count() > 0);
        QCOMPARE(dlg().last().title, titulo);
        QCOMPARE(dlg().last().text, texto);
    }
    // Race 1 of a centre's day with its horses, as a board creates it.
    void crearCarrera(const QString& ch) {
        std::vector<Insercion> filas;
        for (const Row& c : db().query("SELECT caballo, nu_caballo FROM carreras WHERE fecha = ? AND carrera = 1 AND "
                                       "id_hipodromo = 1 ORDER BY id_carrera",
                                       {fecha}))
            filas.push_back(FilaRemate{fecha, 1, c.text("caballo"), c.integer("nu_caballo"), 0, ch, 20}.insercion());
        QCOMPARE(insertarFilas(db(), filas), 8LL);
    }
    void pujar(const QString& ch, int caballo, int tabla, double monto, const QString& comprador) {
        db().exec(QString("UPDATE carreras_remate SET tabla%1 = ?, mesa%1 = ? WHERE fecha = ? AND carrera = 1 AND ch = ? "
                          "AND nu_caballo = ?")
                      .arg(tabla)
                      .toStdString(),
                  {monto, comprador, fecha, ch, caballo});
    }
    // LOS PINOS, two tables: the big board sells 1000 (300 bought by the
    // house on horse 2) with a pot of 100; the small board 100, bought by the
    // house on horse 1.
    void carreraDeLosPinos() {
        crearCarrera("LOS PINOS");
        pujar("LOS PINOS", 1, 1, 500, "12");
        pujar("LOS PINOS", 2, 1, 200, "7");
        pujar("LOS PINOS", 2, 2, 300, "casa");
        pujar("LOS PINOS", 1, 3, 100, "CASA");
        db().exec("UPDATE carreras_remate SET pote = 100 WHERE ch = 'LOS PINOS'");
    }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("admin_subasta", true);
        hoy = env->clock.today();
        fecha = fechaSql(hoy);
    }
    void init() {
        env->loadDemo();
        env->signIn("admin");
        dlg().clear();
    }
    void cleanup() { cerrarDialogos(dlg()); }

    void ganadorDeUnCentro() {
        carreraDeLosPinos();
        crearCarrera("MARACAY");
        pujar("MARACAY", 3, 1, 80, "999");
        const QStringList maracay = foto(db(), {"carreras_remate"}).filter("|MARACAY|");
        AdminRemate admin(env->ctx);
        QCOMPARE(admin.centros(), (QStringList{"TODOS", "LOS PINOS", "MARACAY"}));
        const auto hecho = admin.Procesar("1", "1", "LOS PINOS");
        QVERIFY(hecho);
        esperar("Modificacion del Ganador", "Los Cambios fueron hechos Exitosamente ");
        QCOMPARE(hecho->size(), 1);
        // The house bought the winner on the small board: its pool less commission, half the pot less the deduction.
        QCOMPARE(hecho->first().montoCasa, 0.0);
        QCOMPARE(hecho->first().montoCasa2, 100 - 20 + (0 - 50) / 2.0);
        QCOMPARE(valor("win", 8), 1.0);
        QCOMPARE(valor("monto_casa2", 8), 55.0);
        QCOMPARE(foto(db(), {"carreras_remate"}).filter("|MARACAY|"), maracay);
        // Every centre at once.
        const auto todos = admin.Procesar("1", "3", "TODOS");
        QVERIFY(todos);
        QCOMPARE(todos->size(), 2);
        QCOMPARE(valor("win", 1, "MARACAY"), 3.0);
        QCOMPARE(valor("monto_casa", 1, "MARACAY"), 80 - 16 + (0 - 50) / 2.0);
        QCOMPARE(valor("win", 1), 3.0);
    }

    void ganadorRechazado_data() {
        QTest::addColumn<QString>("usuario");
        QTest::addColumn<QString>("carrera");
        QTest::addColumn<QString>("caballo");
        QTest::addColumn<QString>("centro");
        QTest::addColumn<QString>("mensaje");
        QTest::newRow("race with letters") << "admin" << "1a" << "3" << "TODOS" << "EL NUMERO DE CARRERA NO ES VALIDO";
        QTest::newRow("no horse") << "admin" << "1" << "" << "TODOS" << "EL NUMERO DE CABALLO NO ES VALIDO";
        QTest::newRow("horse not in the race") << "admin" << "1" << "12" << "LOS PINOS"
                                               << "EL NUMERO DEL CABALLO NO EXISTE PARA ESTA CARRERA";
        QTest::newRow("race not auctioned") << "admin" << "2" << "1" << "TODOS" << "LA CARRERA NO TIENE SUBASTA";
        QTest::newRow("auctioneer, another centre") << "remate" << "1" << "3" << "MARACAY"
                                                    << "DEBE ELEGIR UN CENTRO DE LA LISTA";
    }
    void ganadorRechazado() {
        QFETCH(QString, usuario);
        QFETCH(QString, carrera);
        QFETCH(QString, caballo);
        QFETCH(QString, centro);
        QFETCH(QString, mensaje);
        carreraDeLosPinos();
        env->signIn(usuario);
        const QStringList antes = foto(db(), {"carreras_remate"});
        QVERIFY(!AdminRemate(env->ctx).Procesar(carrera, caballo, centro));
        esperar("Modificacion del Ganador", mensaje);
        QCOMPARE(foto(db(), {"carreras_remate"}), antes);
    }

    void celdasDelEscritorio() {
        carreraDeLosPinos();
        CeldasSubasta celdas(env->ctx);
        const Seleccion s = seleccionDePrueba(env->ctx, 1, "LOS PINOS");
        const Recordset rs = celdas.cargar(s);
        QCOMPARE(rs.size(), 8);
        const long long id = rs[4].integer("id_carrera");
        QVERIFY(celdas.escribir(s, id, "tabla5", "45,5"));
        QCOMPARE(valor("tabla5", 5), 45.5);
        QVERIFY(celdas.escribir(s, id, "mesa4", "C"));
        QCOMPARE(textOf(db(), "SELECT mesa4 FROM carreras_remate WHERE id_carrera = ?", {id}), QString("casa"));
        QVERIFY(celdas.escribir(s, id, "pote2", "30"));
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM carreras_remate WHERE pote2 = 30"), 8.0);
        const QStringList antes = foto(db(), {"carreras_remate"});
        QVERIFY(!celdas.escribir(s, id, "tablacasa", "-3"));
        esperar(kTituloSubasta, "EL MONTO NO ES VALIDO");
        QVERIFY(!celdas.escribir(s, id, "mesa1", "A'B"));
        QVERIFY(!celdas.escribir(s, id, "win", "3"));  // not a cell of the grid
        QVERIFY(!celdas.escribir(seleccionDePrueba(env->ctx, 1), id, "pote", "30"));  // no centre chosen
        esperar(kTituloSubasta, "DEBE ELEGIR UN CENTRO DE LA LISTA");
        QCOMPARE(foto(db(), {"carreras_remate"}), antes);
        // When the auction's winner differs from the official one.
        QVERIFY(celdas.cambiarGanador(s, "2"));
        esperar("Modificacion del Ganador", "Los cambios se han realizado con exito");
        QCOMPARE(valor("win", 6), 2.0);
        QCOMPARE(valor("segundolugar", 6), 2.0);
        QCOMPARE(valor("monto_casa", 6), 300 - 60 + (100 - 50) / 2.0);
        QVERIFY(!celdas.cambiarGanador(s, "x"));
        QCOMPARE(celdas.porcentajes(seleccionDePrueba(env->ctx, 1, "LOS PINOS", "08")),
                 (QStringList{"Porcentaje del remate: 20", "Porcentaje del rematador: 5", "Tablas de la subasta: 2",
                              "Tablazos: 10 / 10 / 0 / 0"}));
    }

    void segundoLugarDeUnGanadorInvalidado() {
        carreraDeLosPinos();
        pujar("LOS PINOS", 3, 1, 100, "999");
        db().exec("UPDATE carreras_remate SET win = 2, segundolugar = 3");
        const LadoSubasta& tg = disenoSubasta("Form_Subasta_2T")->grande;
        QCOMPARE(ganadorEfectivo(filasCarrera(db(), fecha, 1, "LOS PINOS"), tg), 2);
        db().exec("UPDATE carreras_remate SET invalidado = 1 WHERE nu_caballo = 2");
        const Recordset filas = filasCarrera(db(), fecha, 1, "LOS PINOS");
        QCOMPARE(ganadorEfectivo(filas, tg), 3);
        const LiquidacionCarrera l = liquidarCarrera(filas, tg, 50);
        QCOMPARE(l.caballoCasa, 3);
        QCOMPARE(l.montoCasa, 800 - 160 + (100 - 50) / 2.0);  // the whole pool of table 1
        QVERIFY(lineasCarrera(l, *disenoSubasta("Form_Subasta_2T")).contains("Cab Ganador: 2   2do: 3"));
    }

    void elCierreDelDiaEscribeElRemate() {
        carreraDeLosPinos();
        db().exec("UPDATE carreras_remate SET win = 1 WHERE ch = 'LOS PINOS'");
        // Big board: 200 - 300 + 0 - 100; small board: 20 - 100 + 55 - 0.
        const double esperado = -200 + -25;
        QCOMPARE(resultadoSubasta(db(), fecha, leerParametros(db(), "07")), esperado);
        const CierreDia::Salida s = CierreDia(env->ctx).cerrar(hoy.addDays(1), true);
        QVERIFY(s.hecho);
        const auto remate = [&](const char* grupo) {
            return numberOf(db(), "SELECT remate FROM ventas_ganadores_general WHERE grupo = ? AND fecha = ?",
                            {grupo, fecha});
        };
        QCOMPARE(remate("07"), esperado);
        QCOMPARE(remate("08"), esperado);
        QCOMPARE(remate("12"), 0.0);
        QCOMPARE(remate("15"), 0.0);
        // A group that runs no auctions has no result, whatever its centre's rows.
        db().exec("UPDATE grupos SET subastas = 0 WHERE grupo = '08'");
        QCOMPARE(resultadoSubasta(db(), fecha, leerParametros(db(), "08")), 0.0);
    }

    void reportePorFechas() {
        // Six closed days of groups 07 and 08, then the working day.
        for (int d = 1; d <= 6; ++d) {
            const QString dia = fechaSql(hoy.addDays(-d));
            for (const char* g : {"07", "08"}) {
                db().exec("INSERT INTO ventas_ganadores_general (grupo, fecha, venta, premios, saldo, monto_porpagar, "
                          "remate) VALUES (?, ?, ?, ?, ?, ?, ?)",
                          {g, dia, 1000.0 * d, 300.0, 1000.0 * d - 350, 50.0, -10.0 * d});
                db().exec("INSERT INTO ventas_tf_general (grupo, fecha, venta, premios, saldo, monto_porpagar) "
                          "VALUES (?, ?, 200, 50, 150, 0)",
                          {g, dia});
            }
        }
        venderBoleto(db(), hoy, 1, 3, 4, "07", "LOS PINOS");
        venderBoleto(db(), hoy, 1, 5, 2, "07", "LOS PINOS", 2, 30);
        carreraDeLosPinos();
        RptSubastaFechas rpt(env->ctx);
        QCOMPARE(rpt.grupos(), (QStringList{"TODOS", "07", "08", "12", "15"}));
        QCOMPARE(rpt.subgrupos(), (QStringList{"", "OCCIDENTE", "ORIENTE"}));

        auto filas = rpt.Procesar(hoy.addDays(-6), hoy, "07", "");
        QVERIFY(filas);
        QCOMPARE(filas->size(), 7);
        const RptSubastaFechas::Fila& primero = filas->first();
        QCOMPARE(primero.fecha, fechaVista(hoy.addDays(-6)));
        QCOMPARE(primero.ganadores, 6000.0 - 300 - 50);
        QCOMPARE(primero.tablaFija, 150.0);
        QCOMPARE(primero.remate, -60.0);
        const RptSubastaFechas::Fila& trabajo = filas->last();
        QCOMPARE(trabajo.fecha, fechaVista(hoy));
        QCOMPARE(trabajo.venta, 60.0);  // 6 units of 10
        QCOMPARE(trabajo.premios, 30.0);
        QCOMPARE(trabajo.ganadores, 30.0);
        QCOMPARE(trabajo.remate, -280.0);  // no winner yet: -200 and -80
        Db& local = env->local();
        QCOMPARE(numberOf(local, "SELECT count(*) FROM rpt_general"), 7.0);
        QCOMPARE(textOf(local, "SELECT group_concat(DISTINCT ch) FROM rpt_general"), QString("07"));
        QCOMPARE(textOf(local, "SELECT min(fecha_inicio) FROM rpt_general"), fechaVista(hoy.addDays(-6)));
        QCOMPARE(numberOf(local, "SELECT remate FROM rpt_general WHERE fecha = ?", {fecha}), -280.0);

        QCOMPARE(rpt.Procesar(hoy.addDays(-6), hoy, "TODOS", "")->size(), 6 * 2 + 4);
        QCOMPARE(rpt.Procesar(hoy.addDays(-6), hoy, "TODOS", "OCCIDENTE")->size(), 2);
        QCOMPARE(rpt.Procesar(hoy.addDays(-3), hoy.addDays(-2), "08", "")->size(), 2);

        // Nothing in the range, or a range backwards.
        QVERIFY(!rpt.Procesar(hoy.addDays(5), hoy.addDays(9), "TODOS", ""));
        esperar(" Busqueda ", "No se encontro Ningun registro");
        QCOMPARE(numberOf(local, "SELECT count(*) FROM rpt_general"), 0.0);
        QVERIFY(!rpt.Procesar(hoy, hoy.addDays(-1), "TODOS", ""));
        esperar("REPORTE DE SUBASTAS", "LA FECHA INICIAL NO PUEDE SER POSTERIOR A LA FINAL");

        // Other levels see their own group only.
        env->signIn("remate");
        RptSubastaFechas propio(env->ctx);
        QCOMPARE(propio.grupos(), QStringList{"08"});
        QVERIFY(!propio.Procesar(hoy.addDays(-6), hoy, "07", ""));
        esperar("REPORTE DE SUBASTAS", "DEBE SELECCIONAR UN GRUPO");
        const auto impreso = propio.impreso(*propio.Procesar(hoy.addDays(-1), hoy, "08", ""), hoy.addDays(-1), hoy);
        QCOMPARE(impreso.lineas.first(), QString("REPORTE VENTA SUBASTA"));
        QCOMPARE(impreso.lineas.last(), QString("Total Remate: -$290.00"));
    }
};

QTEST_MAIN(TstAdministracionSubasta)
#include "tst_administracion_subasta.moc"
