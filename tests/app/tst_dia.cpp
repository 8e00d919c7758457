// A day at the centre across the windows' logic: the administration opens the
// current race, a booth sells, the race closes, the result is processed and
// the booth pays the winner once.
#include "admin/CarreraEscritorio.h"
#include "core/Connections.h"
#include "races/AbrirCerrarLogica.h"
#include "sales/VentaGanadores.h"
#include "support/TestEnv.h"

#include <QtTest>

using namespace hipico;
using namespace hipico::test;

class TstDia : public QObject {
    Q_OBJECT

private slots:
    void aDayAtTheCentre() {
        TestEnv env("dia");
        env.loadDemo();
        const QString hoy = env.clock.today().toString("yyyy-MM-dd");

        // The booth: its own program, connection, dialogs and session.
        ScriptedDialogs taquillaDialogs;
        Context taquilla(env.config, taquillaDialogs, env.clock);
        taquilla.cnServidor = env.connect();
        env.signIn("taquilla1");
        taquilla.session = env.ctx.session;
        taquilla.session.confLocal.impresion = 0;
        env.signIn("admin");

        // The administration moves the current race from 1 to 2.
        AbrirCerrarLogica pozos(env.ctx);
        QVERIFY(pozos.elegirHipodromo("LA RINCONADA"));
        Pozos ganadores;
        ganadores.ganadores = true;
        QVERIFY(pozos.cerrarCarreraActual(1, ganadores));
        QVERIFY(pozos.abrirCarreraActual(2, ganadores));

        VentaGanadores venta(taquilla);
        QCOMPARE(int(venta.procesarVenta("1", "3", "2").resultado), int(VentaGanadores::Resultado::Rechazado));
        QCOMPARE(taquillaDialogs.last().text, QString("LA CARRERA ESTA CERRADA, NO SE PUEDE HACER NINGUNA VENTA"));
        // Race 1's pool opened again by its button: open, but not the race the booths sell.
        QVERIFY(pozos.abrir(1, ganadores));
        QCOMPARE(int(venta.procesarVenta("1", "3", "2").resultado), int(VentaGanadores::Resultado::Rechazado));
        QCOMPARE(taquillaDialogs.last().text, QString("EL NUMERO DE CARRERA NO ESTA PERMITIDO PARA LA VENTA"));
        const auto ganador = venta.procesarVenta("2", "3", "2");
        QCOMPARE(int(ganador.resultado), int(VentaGanadores::Resultado::Vendido));
        const auto perdedor = venta.procesarVenta("2", "5", "1");
        QCOMPARE(int(perdedor.resultado), int(VentaGanadores::Resultado::Vendido));
        QVERIFY(ganador.boleto.codigo.startsWith("07"));

        // The race closes: no more sales.
        QVERIFY(pozos.cerrarCarreraActual(2, ganadores));
        QCOMPARE(int(venta.procesarVenta("2", "4", "1").resultado), int(VentaGanadores::Resultado::Rechazado));
        QCOMPARE(taquillaDialogs.last().text, QString("LA CARRERA ESTA CERRADA, NO SE PUEDE HACER NINGUNA VENTA"));
        QCOMPARE(numberOf(env.db(), "SELECT count(*) FROM ma_principal WHERE fecha = ?", {hoy}), 2.0);

        // The result: horse 3 wins with an official dividend of 4,60. Group 07
        // adds 1 to dividends between 3 and 9.99.
        Seleccion sel = seleccionInicial(env.ctx);
        sel.fecha = hoy;
        sel.hipodromo = "LA RINCONADA";
        sel.carrera = 2;
        QVERIFY(ResultadoCarrera(env.ctx).procesar(sel, "3", "4,60"));
        const Row pagar = env.db().query("SELECT * FROM ma_principal WHERE nu_boleto = ?", {ganador.boleto.codigo}).first();
        QCOMPARE(pagar.integer("estatus"), 1LL);
        QCOMPARE(pagar.number("cobrado"), 2 * 5.6);

        // The booth pays the winner, once; the loser is not a winner.
        const auto consulta = venta.buscarBoletoCobro(ganador.boleto.codigo);
        QVERIFY(consulta.pagable);
        QCOMPARE(consulta.mensaje, QString("CABALLO GANADOR"));
        QCOMPARE(consulta.monto, 2 * 5.6);
        QVERIFY(venta.cobrarBoleto());
        QCOMPARE(textOf(env.db(), "SELECT estatus FROM ma_principal WHERE nu_boleto = ?", {ganador.boleto.codigo}),
                 QString("2"));
        QVERIFY(!venta.buscarBoletoCobro(ganador.boleto.codigo).pagable);
        QCOMPARE(taquillaDialogs.last().text, QString("BOLETO YA PAGADO"));
        QVERIFY(!venta.buscarBoletoCobro(perdedor.boleto.codigo).pagable);
        QCOMPARE(taquillaDialogs.last().text, QString("BOLETO NO GANADOR"));
        QCOMPARE(numberOf(env.db(), "SELECT premios FROM ventas_ganadores_general WHERE grupo = '07' AND fecha = ?", {hoy}),
                 2 * 5.6);
    }
};

QTEST_MAIN(TstDia)
#include "tst_dia.moc"
