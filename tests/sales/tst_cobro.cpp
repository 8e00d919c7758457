// Payment, void and the booth's cash figures of the winner game, against the
// real server (the tables every game shares are in tst_juegos): a winner and
// a refund paid with the day row, the group copy and the slip, the void's
// audit row and permission, the totals of a mixed day, the printed summary
// and the per-booth summary of managers.
#include "BoothFixture.h"

#include "sales/CuadreTaquillas.h"

#include <QtTest>

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

    void cleanup() { cerrarDialogos(env->dialogs); }

    void init() {
        env->loadDemo();
        entrar("taquilla1");
        // This machine has a local schema: its settings row says where to print.
        env->local().exec("update conf_local set puerto=?, impresion=1 where id=1", {"cobro.prn"});
        QFile::remove("cobro.prn");
    }

    // A winner and a refund paid: the day row, the group copy and the slip.
    void winnerAndRefundPaid() {
        VentaGanadores v = nueva();
        const auto a = vender(v, "3", "5");
        const auto b = vender(v, "2", "3");
        liquidar(db(), fecha, 1, 3, 12.5);
        devolverBoletos(db(), fecha, 1, "07", 2, 10);
        copiarAlGrupo(db(), juegoGanadores(), b.codigo);  // a kept day's copy moves with it
        QVERIFY(v.buscarBoletoCobro(a.codigo).pagable && v.cobrarBoleto());
        QCOMPARE(textOf(db(), "SELECT concat_ws(':', premios, saldo, monto_porpagar) FROM ventas_ganadores_general "
                              "WHERE grupo='07' AND fecha=?",
                        {fecha}),
                 QString("62.5:-62.5:-62.5"));
        // The slip (ticket_cobro on), after the ticket, on the port of the local settings.
        QVERIFY(leerPuerto("cobro.prn").endsWith(crudo({"COBRO DE JUGADA GANADORES", "CH: LOS PINOS",
                                                        "FECHA: " + fechaVista(fecha), "HORA: 10:30:00",
                                                        "BOLETO: " + a.codigo, "MONTO COBRADO : Bs. 62,50"})));
        const auto c = v.buscarBoletoCobro(b.codigo);
        QCOMPARE(c.mensaje, QString("CABALLO RETIRADO"));
        QCOMPARE(c.monto, 30.0);
        QVERIFY(v.cobrarBoleto());
        QCOMPARE(estado(b.codigo), "3:" + fecha);
        QCOMPARE(textOf(db(), "SELECT concat(estatus, ':', fecha_cobro) FROM ventas_ganadores WHERE nu_boleto=?",
                        {b.codigo}),
                 "3:" + fecha);
    }

    void voidWritesTheLogAndRemovesTheTicket() {
        VentaGanadores v = nueva();
        const auto b = vender(v, "3", "3");
        env->dialogs.clear();
        env->dialogs.cancel();
        QVERIFY(!v.anularBoleto());  // cancelled at the code
        env->dialogs.type(b.codigo).type("CLIENTE SE ARREPINTIO").yes();
        QVERIFY(v.anularBoleto());
        const auto& cajas = env->dialogs.shown();
        QCOMPARE(cajas[1].title, QString("CODIGO DEL BOLETO"));
        QCOMPARE(cajas[1].text, QString("INGRESE EL CODIGO DEL BOLETO"));
        QCOMPARE(cajas[2].title, QString("MOTIVO DE LA ANULACIÓN DEL BOLETO "));
        QCOMPARE(cajas[2].text, QString("INGRESE EL MOTIVO"));
        // The ticket is shown before it goes.
        QVERIFY(cajas[3].text.contains("BOLETO: " + b.codigo));
        QCOMPARE(cajas.last().text, QString("BOLETO ANULADO CON EXITO"));
        QCOMPARE(contar(db(), "ma_principal"), 0LL);
        QCOMPARE(textOf(db(), "SELECT concat_ws('|', estatus, nu_boleto, motivo, usuario, taquilla, ganadores) FROM "
                              "bitacora"),
                 "5|" + b.codigo + "|CLIENTE SE ARREPINTIO|taquilla1|LOS PINOS|3");
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
        env->dialogs.type(f.codigo).type("ANULADO").yes();
        QVERIFY(v.anularBoleto());
        devolverBoletos(db(), fecha, 1, "07", 4, 10);
        liquidar(db(), fecha, 1, 3, 12.5);
        QVERIFY(v.buscarBoletoCobro(a.codigo).pagable && v.cobrarBoleto());
        QVERIFY(v.buscarBoletoCobro(c.codigo).pagable && v.cobrarBoleto());
        // Another centre's ticket does not count here.
        Taquilla maracay(*env, env->ctx.session);
        maracay.ctx.session.ch = "MARACAY";
        maracay.ctx.session.grupo = "12";
        QCOMPARE(int(maracay.venta.procesarVenta("1", "3", "9").resultado), int(VentaGanadores::Resultado::Vendido));

        // Units and money sold, paid (62,50 + 30), due (31,25 + 10), voided, balance and cash.
        const TotalesDia t = v.Totalizar_Dia();
        QCOMPARE(QList<double>({t.unidadesVendidas, t.venta, double(t.cantVenta), t.cobrado, double(t.cantCobrado),
                                t.porCobrar, double(t.cantPorCobrar), double(t.anulados), t.saldo(), t.caja()}),
                 QList<double>({17.5, 175, 5, 92.5, 2, 41.25, 2, 1, 41.25, 82.5}));
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
        liquidar(db(), fecha, 1, 3, 12);
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
        auto cifras = [](const CuadreTaquillas::Fila& f) {
            return QStringLiteral("%1|%2|%3|%4|%5").arg(f.taquilla).arg(f.jugado).arg(f.cobrado).arg(f.porPagar).arg(f.total);
        };
        QCOMPARE(cifras(filas[0]) + "," + cifras(filas[1]), QString("LOS PINOS|90|60|0|30,MARACAY|100|0|0|100"));
        QCOMPARE(textOf(env->local(), "SELECT group_concat(concat_ws('|', taquilla, fecha, jugado, cobrado, total) "
                                      "ORDER BY id) FROM rpt_resultadostaqs"),
                 "LOS PINOS|" + fechaVista(fecha) + "|90|60|30,MARACAY|" + fechaVista(fecha) + "|100|0|100");
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
