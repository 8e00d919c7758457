// Payment, void and the booth's cash figures, against the real server: the
// lookup's tamper checks and outcomes, a ticket paid exactly once by two
// booths pressing together, the void rules, the totals of a mixed day, the
// printed summary and the per-booth summary of managers.
#include "BoothFixture.h"

#include "sales/CuadreTaquillas.h"

#include <QtTest>
#include <thread>

using namespace hipico;
using namespace hipico::test;

class TstCobro : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QTemporaryDir carpeta;
    QString puerto;
    QString fecha;

    Db& db() { return env->db(); }
    VentaGanadores nueva() { return ventaCargada(env->ctx); }
    void entrar(const QString& usuario) { test::entrar(*env, usuario); }
    VentaGanadores::Boleto vender(VentaGanadores& v, const QString& caballo, const QString& monto) {
        const auto r = v.procesarVenta("1", caballo, monto);
        if (r.resultado != VentaGanadores::Resultado::Vendido)
            qFatal("venta rechazada: %s", qPrintable(env->dialogs.last().text));
        return r.boleto;
    }
    QString estado(const QString& codigo) {
        return textOf(db(), "SELECT concat(estatus, ':', fecha_cobro) FROM ma_principal WHERE nu_boleto = ?", {codigo});
    }

private slots:
    void initTestCase() {
        env = entorno("cobro", carpeta.path(), true);
        puerto = carpeta.filePath("boletos.prn");
        fecha = fechaSql(env->clock.today());
    }

    void init() {
        env->loadDemo();
        entrar("taquilla1");
        // This machine has a local schema: its settings row says where to print.
        env->local().exec("update conf_local set puerto=?, impresion=1 where id=1", {"cobro.prn"});
        QFile::remove("cobro.prn");
    }

    void winnerIsPaidOnceAndMovesTheDayRow() {
        VentaGanadores v = nueva();
        const auto b = vender(v, "3", "5");
        liquidar(db(), 1, 3, 12.5, "07", fecha);
        const auto c = v.buscarBoletoCobro(b.codigo);
        QVERIFY(c.pagable);
        QCOMPARE(c.mensaje, QString("CABALLO GANADOR"));
        QCOMPARE(c.monto, 62.5);
        QVERIFY(env->dialogs.shown().isEmpty());
        QVERIFY(v.cobrarBoleto());
        QCOMPARE(estado(b.codigo), "2:" + fecha);
        const Row dia = db().query("SELECT * FROM ventas_ganadores_general WHERE grupo='07' AND fecha=?", {fecha}).first();
        QCOMPARE(dia.number("premios"), 62.5);
        QCOMPARE(dia.number("saldo"), -62.5);
        QCOMPARE(dia.number("monto_porpagar"), -62.5);
        // The slip (ticket_cobro on), after the ticket, on the port of the local settings.
        const QString impreso = leerPuerto("cobro.prn");
        QVERIFY(impreso.endsWith(crudo({"COBRO DE JUGADA GANADORES", "CH: LOS PINOS", "FECHA: " + fechaVista(fecha),
                                        "HORA: 10:30:00", "BOLETO: " + b.codigo,
                                        "MONTO COBRADO : Bs. 62,50"})));
        // Once paid, never again.
        QVERIFY(!v.cobrarBoleto());
        QVERIFY(!v.buscarBoletoCobro(b.codigo).pagable);
        QCOMPARE(env->dialogs.last().text, QString("BOLETO YA PAGADO"));
    }

    void refundIsPaidAsRefundAndGroupCopyFollows() {
        VentaGanadores v = nueva();
        const auto b = vender(v, "2", "3");
        devolver(db(), b.codigo);
        // The group copy of the ticket (kept days) moves with it.
        db().exec("INSERT INTO ventas_ganadores SELECT NULL, m.* FROM ma_principal m WHERE nu_boleto = ?", {b.codigo});
        const auto c = v.buscarBoletoCobro(b.codigo);
        QVERIFY(c.pagable);
        QCOMPARE(c.mensaje, QString("CABALLO RETIRADO"));
        QCOMPARE(c.monto, 30.0);
        QVERIFY(v.cobrarBoleto());
        QCOMPARE(estado(b.codigo), "3:" + fecha);
        QCOMPARE(textOf(db(), "SELECT concat(estatus, ':', fecha_cobro) FROM ventas_ganadores WHERE nu_boleto=?",
                        {b.codigo}),
                 "3:" + fecha);
    }

    void lookupOutcomes_data() {
        QTest::addColumn<QString>("cambio");  // applied to the sold ticket (winner of 12.5)
        QTest::addColumn<QString>("texto");
        QTest::addColumn<bool>("pagable");
        QTest::newRow("same day winner") << "" << "CABALLO GANADOR" << true;
        QTest::newRow("not a winner") << "estatus=0, cobrado=0" << "BOLETO NO GANADOR" << false;
        QTest::newRow("paid") << "estatus=2" << "BOLETO YA PAGADO" << false;
        QTest::newRow("refund paid") << "estatus=3" << "BOLETO YA PAGADO" << false;
        QTest::newRow("earlier day") << "fecha=date_sub(fecha, interval 1 day)"
                                     << "ATENCION ESTE BOLETO ES DE UN DIA ANTERIOR, DEBE PEDIR EL DINERO A LA "
                                        "ADMINISTRACION"
                                     << false;
        QTest::newRow("earlier day refund") << "estatus=4, cobrado=50, fecha=date_sub(fecha, interval 3 day)"
                                            << "CABALLO RETIRADO" << true;
        QTest::newRow("expired") << "estatus=4, cobrado=50, fecha=date_sub(fecha, interval 4 day)"
                                 << "BOLETO CADUCADO" << false;
        QTest::newRow("another centre") << "ch='MARACAY'" << "EL BOLETO NO PERTENECE A ESTA TAQUILLA" << false;
    }
    void lookupOutcomes() {
        QFETCH(QString, cambio);
        QFETCH(QString, texto);
        QFETCH(bool, pagable);
        VentaGanadores v = nueva();
        const auto b = vender(v, "3", "4");
        liquidar(db(), 1, 3, 12.5, "07", fecha);
        if (!cambio.isEmpty())
            db().exec(("UPDATE ma_principal SET " + cambio + " WHERE nu_boleto = ?").toStdString(), {b.codigo});
        const QString antes = textOf(db(), "SELECT concat(estatus, fecha_cobro) FROM ma_principal");
        const auto c = v.buscarBoletoCobro(b.codigo);
        QCOMPARE(c.pagable, pagable);
        if (pagable) {
            QCOMPARE(c.mensaje, texto);
            QVERIFY(env->dialogs.shown().isEmpty());
        } else {
            QCOMPARE(env->dialogs.count(), 1);
            QCOMPARE(env->dialogs.last().text, texto);
            QVERIFY(!v.cobrarBoleto());
        }
        QCOMPARE(textOf(db(), "SELECT concat(estatus, fecha_cobro) FROM ma_principal"), antes);
    }

    void unknownCode() {
        VentaGanadores v = nueva();
        for (const QString& codigo : {QString(), QString("0711239999"), QString("'; drop table ma_principal; --")}) {
            env->dialogs.clear();
            QVERIFY(!v.buscarBoletoCobro(codigo).pagable);
            QCOMPARE(env->dialogs.last().text, QString("VERIFIQUE EL NUMERO DEL BOLETO"));
        }
        QCOMPARE(contar(db(), "ma_principal"), 0LL);
    }

    void everyAlterationIsCaught_data() {
        QTest::addColumn<QString>("cambio");
        QTest::addColumn<QString>("copia");  // change made to the group copy instead
        QTest::addColumn<QString>("texto");
        QTest::newRow("horse") << "caballo=4" << ""
                               << "Este boleto presenta una alteración, verificar bien los datos del boleto";
        QTest::newRow("race") << "carrera=2" << ""
                              << "Este boleto presenta una alteración en el numero de carrera, verificar bien los "
                                 "datos del boleto";
        QTest::newRow("units") << "ganadores=50" << ""
                               << "Este boleto presenta una alteración en el monto, verificar bien los datos del "
                                  "boleto";
        QTest::newRow("payout") << "cobrado=cobrado*2" << ""
                                << "Este boleto presenta una alteracion en el Monto, verificar bien los datos del "
                                   "boleto";
        QTest::newRow("group copy") << "" << "carrera=2"
                                    << "Este boleto presenta una alteración en el numero de Carrera, verificar bien "
                                       "los datos del boleto";
        QTest::newRow("password-path ticket (zero keys)") << "llave='0',llave2='0',llave5='0'" << ""
                                                          << "Este boleto presenta una alteración, verificar bien "
                                                             "los datos del boleto";
    }
    void everyAlterationIsCaught() {
        QFETCH(QString, cambio);
        QFETCH(QString, copia);
        QFETCH(QString, texto);
        VentaGanadores v = nueva();
        const auto b = vender(v, "3", "4");
        liquidar(db(), 1, 3, 7.25, "07", fecha);
        db().exec("INSERT INTO ventas_ganadores SELECT NULL, m.* FROM ma_principal m WHERE nu_boleto = ?", {b.codigo});
        // Unaltered, it passes.
        QVERIFY(v.buscarBoletoCobro(b.codigo).pagable);
        if (!cambio.isEmpty())
            db().exec(("UPDATE ma_principal SET " + cambio + " WHERE nu_boleto = ?").toStdString(), {b.codigo});
        if (!copia.isEmpty())
            db().exec(("UPDATE ventas_ganadores SET " + copia + " WHERE nu_boleto = ?").toStdString(), {b.codigo});
        env->dialogs.clear();
        QVERIFY(!v.buscarBoletoCobro(b.codigo).pagable);
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().title, QString("Seguridad del Sistema"));
        QCOMPARE(int(env->dialogs.last().icon), int(Icon::Critical));
        QCOMPARE(env->dialogs.last().text, texto);
        QCOMPARE(textOf(db(), "SELECT estatus FROM ma_principal WHERE nu_boleto = ?", {b.codigo}), QString("1"));
    }

    void alterationBetweenLookupAndPaymentIsCaught() {
        VentaGanadores v = nueva();
        const auto b = vender(v, "3", "4");
        liquidar(db(), 1, 3, 7.25, "07", fecha);
        QVERIFY(v.buscarBoletoCobro(b.codigo).pagable);
        db().exec("UPDATE ma_principal SET cobrado=cobrado+1000 WHERE nu_boleto = ?", {b.codigo});
        QVERIFY(!v.cobrarBoleto());
        QCOMPARE(env->dialogs.last().title, QString("Seguridad del Sistema"));
        QCOMPARE(estado(b.codigo), QString("1:0"));
        QCOMPARE(numberOf(db(), "SELECT premios FROM ventas_ganadores_general WHERE grupo='07'"), 0.0);
    }

    // Two booths press "COBRAR" on the same ticket at the same moment.
    void paidExactlyOnceByTwoBooths() {
        VentaGanadores v = nueva();
        QVector<QString> codigos;
        for (int i = 0; i < 20; ++i) codigos << vender(v, "3", "1").codigo;
        liquidar(db(), 1, 3, 9, "07", fecha);
        const Session sesion = env->ctx.session;
        Taquilla a(*env, sesion), b(*env, sesion);
        int pagos = 0;
        for (const QString& codigo : codigos) {
            QVERIFY(a.venta.buscarBoletoCobro(codigo).pagable);
            QVERIFY(b.venta.buscarBoletoCobro(codigo).pagable);
            bool pa = false, pb = false;
            std::thread ta([&] { pa = a.venta.cobrarBoleto(); });
            std::thread tb([&] { pb = b.venta.cobrarBoleto(); });
            ta.join();
            tb.join();
            QVERIFY(pa != pb);
            pagos += pa + pb;
            QCOMPARE(estado(codigo), "2:" + fecha);
        }
        QCOMPARE(pagos, 20);
        QCOMPARE(b.dialogs.shown().size() + a.dialogs.shown().size(), qsizetype(20));
        for (const auto& caja : a.dialogs.shown()) QCOMPARE(caja.text, QString("BOLETO YA PAGADO"));
        QCOMPARE(numberOf(db(), "SELECT premios FROM ventas_ganadores_general WHERE grupo='07'"), 180.0);
    }

    void voidRules_data() {
        QTest::addColumn<QString>("cambio");
        QTest::addColumn<QStringList>("respuestas");  // code ("=" the ticket's), reason
        QTest::addColumn<QString>("texto");
        const QString noSeEncuentra = "EL BOLETO NO SE PUEDE ANULAR NO SE ENCUENTRA EL CODIGO";
        QTest::newRow("empty reason") << "" << QStringList{"=", "  "} << "No se puede realizar la operación sin un motivo";
        QTest::newRow("unknown code") << "" << QStringList{"0711230001", "ANULADO"} << noSeEncuentra;
        QTest::newRow("another centre") << "ch='MARACAY'" << QStringList{"=", "ANULADO"} << noSeEncuentra;
        QTest::newRow("earlier day") << "fecha=date_sub(fecha, interval 1 day)" << QStringList{"=", "ANULADO"}
                                     << "EL BOLETO NO SE PUEDE ANULAR";
        QTest::newRow("refund due") << "estatus=4, cobrado=30" << QStringList{"=", "ANULADO"}
                                    << "EL BOLETO NO SE PUEDE ANULAR";
        QTest::newRow("winner") << "estatus=1, cobrado=30" << QStringList{"=", "ANULADO"}
                                << "EL BOLETO NO SE PUEDE ANULAR";
        QTest::newRow("processed race") << "" << QStringList{"=", "ANULADO"}
                                        << "EL BOLETO NO SE PUEDE ANULAR, LA CARRERA YA FUE PROCESADA";
    }
    void voidRules() {
        QFETCH(QString, cambio);
        QFETCH(QStringList, respuestas);
        QFETCH(QString, texto);
        VentaGanadores v = nueva();
        const auto b = vender(v, "3", "3");
        if (!cambio.isEmpty())
            db().exec(("UPDATE ma_principal SET " + cambio + " WHERE nu_boleto = ?").toStdString(), {b.codigo});
        if (QTest::currentDataTag() == QString("processed race"))
            db().exec("update carreras set win_ganadores=5 where carrera=1 and id_hipodromo=2");
        env->dialogs.clear();
        env->dialogs.type(respuestas[0] == "=" ? b.codigo : respuestas[0]).type(respuestas[1]);
        QVERIFY(!v.anularBoleto());
        QCOMPARE(env->dialogs.last().text, texto);
        QCOMPARE(contar(db(), "ma_principal"), 1LL);
        QCOMPARE(contar(db(), "bitacora"), 0LL);
    }

    void voidWritesTheLogAndRemovesTheTicket() {
        VentaGanadores v = nueva();
        const auto b = vender(v, "3", "3");
        env->dialogs.clear();
        env->dialogs.cancel();
        QVERIFY(!v.anularBoleto());  // cancelled at the code
        env->dialogs.type(b.codigo).type("CLIENTE SE ARREPINTIO");
        QVERIFY(v.anularBoleto());
        const auto& cajas = env->dialogs.shown();
        QCOMPARE(cajas[1].title, QString("CODIGO DEL BOLETO"));
        QCOMPARE(cajas[1].text, QString("INGRESE EL CODIGO DEL BOLETO"));
        QCOMPARE(cajas[2].title, QString("MOTIVO DE LA ANULACIÓN DEL BOLETO "));
        QCOMPARE(cajas[2].text, QString("INGRESE EL MOTIVO"));
        QCOMPARE(cajas.last().text, QString("BOLETO ANULADO CON EXITO"));
        QCOMPARE(contar(db(), "ma_principal"), 0LL);
        const Row log = db().query("SELECT * FROM bitacora").first();
        QCOMPARE(log.integer("estatus"), 5LL);
        QCOMPARE(log.text("nu_boleto"), b.codigo);
        QCOMPARE(log.text("motivo"), QString("CLIENTE SE ARREPINTIO"));
        QCOMPARE(log.text("usuario"), QString("taquilla1"));
        QCOMPARE(log.text("taquilla"), QString("LOS PINOS"));
        QCOMPARE(log.number("ganadores"), 3.0);
        // Gone: the payment lookup no longer finds it.
        QVERIFY(!v.buscarBoletoCobro(b.codigo).pagable);
        QCOMPARE(env->dialogs.last().text, QString("VERIFIQUE EL NUMERO DEL BOLETO"));
    }

    void voidNeedsTheGroupsPermission() {
        db().exec("update grupos set anular_boleto_win=0");
        entrar("taquilla1");
        VentaGanadores v = nueva();
        QVERIFY(!v.puedeAnular());
        QVERIFY(!v.anularBoleto());
        QCOMPARE(env->dialogs.last().text, QString(" Usted no posee acceso a esta parte del sistema"));
        entrar("gerente");
        QVERIFY(VentaGanadores(env->ctx).puedeAnular());
    }

    // Sold, paid, due, refunded and voided tickets of one day.
    void totalsOfAMixedDay() {
        VentaGanadores v = nueva();
        const auto a = vender(v, "3", "5");     // winner, paid
        const auto b = vender(v, "3", "2,5");   // winner, due
        const auto c = vender(v, "4", "3");     // refund, paid
        vender(v, "4", "1");                    // refund, due (code not needed)
        vender(v, "5", "6");                    // loser
        const auto f = vender(v, "5", "2");     // voided
        env->dialogs.type(f.codigo).type("ANULADO");
        QVERIFY(v.anularBoleto());
        db().exec("update ma_principal set estatus=4,cobrado=ganadores*10 where caballo=4");
        liquidar(db(), 1, 3, 12.5, "07", fecha);
        QVERIFY(v.buscarBoletoCobro(a.codigo).pagable && v.cobrarBoleto());
        QVERIFY(v.buscarBoletoCobro(c.codigo).pagable && v.cobrarBoleto());
        // Another centre's ticket does not count here.
        Taquilla maracay(*env, env->ctx.session);
        maracay.ctx.session.ch = "MARACAY";
        maracay.ctx.session.grupo = "12";
        QCOMPARE(int(maracay.venta.procesarVenta("1", "3", "9").resultado), int(VentaGanadores::Resultado::Vendido));

        const TotalesDia t = v.Totalizar_Dia();
        QCOMPARE(t.unidadesVendidas, 17.5);
        QCOMPARE(t.venta, 175.0);
        QCOMPARE(t.cantVenta, 5LL);
        QCOMPARE(t.cobrado, 62.5 + 30.0);
        QCOMPARE(t.cantCobrado, 2LL);
        QCOMPARE(t.porCobrar, 31.25 + 10.0);
        QCOMPARE(t.cantPorCobrar, 2LL);
        QCOMPARE(t.anulados, 1LL);
        QCOMPARE(t.saldo(), 175.0 - 92.5 - 41.25);
        QCOMPARE(t.caja(), 175.0 - 92.5);
        Q_UNUSED(b);

        // The printed summary of all races, line by line.
        db().exec("update carreras set dividendo=11, win_ganadores=3 where carrera=1 and id_hipodromo=1");
        QFile::remove("cobro.prn");
        QVERIFY(v.imprimirResumen(0, 0));
        const QString linea = "---------------------------------";
        QCOMPARE(leerPuerto("cobro.prn"),
                 crudo({"--- VENTA DE GANADORES ---", "RESUMEN DE VENTAS", "CENTRO HIPICO LOS PINOS", "TAQUILLA taquilla1",
                        "FECHA: " + fechaVista(fecha), "HORA: 10:30:00", "CARRERA: TODAS", "VENTA : Bs. 175,00",
                        "PREMIOS PAGADOS : Bs. 92,50", "POR PAGAR : Bs. 41,25", "SALDO : Bs. 41,25", linea,
                        "MONTO EN CAJA : Bs. 82,50", "BOLETOS VENDIDOS : 5", "BOLETOS PAGADOS  : 2",
                        "BOLETOS POR PAGAR: 2", "BOLETOS ANULADOS : 1", linea, "CARRERA: 1", "CABALLO GANADOR : 3",
                        "DIVIDENDO : Bs. 12,50"}));
        // A range of races that this booth did not sell in.
        QFile::remove("cobro.prn");
        QVERIFY(v.imprimirResumen(2, 3));
        QVERIFY(leerPuerto("cobro.prn").contains("CARRERA: DE LA 2 HASTA LA 3\r\nVENTA : Bs. 0,00\r\n"));
    }

    void summaryWaitsForTheResultWhenConfigured() {
        VentaGanadores v = nueva();
        vender(v, "3", "5");
        db().exec("update configuracion set rpt_taquillaconfirmar=1");
        QVERIFY(!v.imprimirResumen(0, 0));
        QCOMPARE(env->dialogs.last().title, QString("IMPRESION DE RESUME DE VENTAS"));
        QCOMPARE(env->dialogs.last().text,
                 QString("No se puede imprimir el resumen de ventas hasta que se confirme la carrera"));
        QVERIFY(!QFile::exists("cobro.prn") || !leerPuerto("cobro.prn").contains("RESUMEN"));
        db().exec("update carreras set dividendo=4.2, win_ganadores=1 where carrera=1");
        QVERIFY(v.imprimirResumen(0, 0));
        QVERIFY(v.imprimirResumen(1, 1));
        QVERIFY(!v.imprimirResumen(1, 2));  // race 2 has no result yet
    }

    void boothSummaryOfManagers() {
        VentaGanadores v = nueva();
        const auto a = vender(v, "3", "5");
        vender(v, "2", "4");
        liquidar(db(), 1, 3, 12, "07", fecha);
        QVERIFY(v.buscarBoletoCobro(a.codigo).pagable && v.cobrarBoleto());
        Taquilla maracay(*env, env->ctx.session);
        maracay.ctx.session.ch = "MARACAY";
        maracay.ctx.session.grupo = "12";
        maracay.venta.procesarVenta("1", "3", "10");

        entrar("admin");
        CuadreTaquillas c(env->ctx);
        QCOMPARE(c.grupos(), (QStringList{"TODOS", "07", "08", "12", "15"}));
        const auto filas = c.buscar(env->clock.today(), "TODOS");
        QCOMPARE(filas.size(), 2);
        QCOMPARE(filas[0].taquilla, QString("LOS PINOS"));
        QCOMPARE(filas[0].jugado, 90.0);
        QCOMPARE(filas[0].cobrado, 60.0);
        QCOMPARE(filas[0].porPagar, 0.0);
        QCOMPARE(filas[0].total, 30.0);
        QCOMPARE(filas[1].taquilla, QString("MARACAY"));
        QCOMPARE(filas[1].jugado, 100.0);
        const Recordset rpt = env->local().query("SELECT * FROM rpt_resultadostaqs ORDER BY id");
        QCOMPARE(rpt.size(), 2);
        QCOMPARE(rpt[0].text("taquilla"), QString("LOS PINOS"));
        QCOMPARE(rpt[0].text("fecha"), fechaVista(fecha));
        QCOMPARE(rpt[0].number("jugado"), 90.0);
        QCOMPARE(rpt[0].number("cobrado"), 60.0);
        QCOMPARE(rpt[0].number("total"), 30.0);
        // One group; then a day without sales.
        QCOMPARE(c.buscar(env->clock.today(), "12").size(), 1);
        env->dialogs.clear();
        QVERIFY(c.buscar(env->clock.today().addDays(-1), "TODOS").isEmpty());
        QCOMPARE(env->dialogs.last().title, QString(" Busqueda "));
        QCOMPARE(env->dialogs.last().text, QString("No se encontro Ningun registro"));
        QCOMPARE(contar(env->local(), "rpt_resultadostaqs"), 0LL);
        // A manager sees the groups of the centre; a booth its own.
        entrar("gerente");
        QCOMPARE(CuadreTaquillas(env->ctx).grupos(), (QStringList{"TODOS", "07", "08"}));
        QCOMPARE(CuadreTaquillas(env->ctx).buscar(env->clock.today(), "TODOS").size(), 1);
        entrar("taquilla1");
        QCOMPARE(CuadreTaquillas(env->ctx).grupos(), QStringList{"07"});
        QCOMPARE(CuadreTaquillas(env->ctx).buscar(env->clock.today(), "12").first().taquilla, QString("LOS PINOS"));
    }
};

QTEST_MAIN(TstCobro)
#include "tst_cobro.moc"
