// The Macuare sale against the real server: each refusal in its order with
// nothing written, the ticket's code and row, the combination register
// (insert, then update), the quota of a combination at and past its limit
// across the booths of a group at once, the close against booths selling,
// payment exactly once from two connections, the void by code with its
// audit row, the printed ticket, slip and summary.
#include "BoothFixture.h"

#include "admin/ProcesoMacuare.h"
#include "schema/Demo.h"
#include "sales/VentaMacuare.h"

#include <QtTest>
#include <atomic>
#include <thread>

using namespace hipico;
using namespace hipico::test;

namespace {

using CabinaMC = TaquillaDe<VentaMacuare>;

const QStringList kPicks{"1", "2", "3", "4", "5", "6", "1"};

PedidoMacuare pedido(const QString& monto, const QString& veces = "1", QStringList picks = kPicks,
                     const QString& nombre = "JUAN") {
    return {picks, monto, veces, nombre};
}

}  // namespace

class TstMacuare : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QTemporaryDir carpeta;
    QString puerto;
    QString fecha;

    Db& db() { return env->db(); }
    VentaMacuare nueva() {
        VentaMacuare v(env->ctx);
        v.cargar();
        return v;
    }
    BoletoMacuareVendido vender(VentaMacuare& v, const PedidoMacuare& p) {
        const auto r = v.vender(p);
        if (!r.vendido) qFatal("venta rechazada: %s", qPrintable(env->dialogs.last().text));
        return r.boleto;
    }
    QStringList fotoMacuare() {
        return foto(db(), {"macuares", "combinaciones_general", "ventas_mc_general", "bitacora_mc"});
    }

private slots:
    void initTestCase() {
        env = entorno("macuare", carpeta.path());
        puerto = carpeta.filePath("mc.prn");
        fecha = fechaSql(env->clock.today());
    }

    void init() {
        empezarDia(*env, puerto);
        cargarDemoMacuare(db(), env->clock.today());
        db().exec("DELETE FROM macuares");
        db().exec("DELETE FROM combinaciones_general");
        db().exec("DELETE FROM caballos_ganadores");
        entrar(*env, "taquilla2");
        prepararImpresion(env->config, puerto);
    }

    void cleanup() { cerrarDialogos(env->dialogs); }

    void refusals_data() {
        QTest::addColumn<QString>("preparar");
        QTest::addColumn<QStringList>("picks");
        QTest::addColumn<QString>("monto");
        QTest::addColumn<QString>("veces");
        QTest::addColumn<QString>("texto");
        const QString cerrado = "LA CARRERA ESTA CERRADA, NO SE PUEDEN HACER CAMBIOS";
        const QString monto = "DEBE INGRESAR UN MONTO";
        const QString caballos = "Tiene Caballos con numeros no validos";
        const QString veces = "LAS VECES DEBEN ESTAR ENTRE 1 Y 10";
        // In the order the sale checks: a closed Macuare before a bad amount, and so on.
        QTest::newRow("cerrado") << "UPDATE configuracion SET venta_macuare = 0" << QStringList{} << "" << "x" << cerrado;
        QTest::newRow("pierna cerrada") << "UPDATE carreras SET venta_mc = 0 WHERE carrera = 1" << kPicks << "10" << "1"
                                        << cerrado;
        QTest::newRow("grupo sin macuare") << "UPDATE grupos SET macuare = 0 WHERE grupo = '08'" << kPicks << "10"
                                           << "1" << cerrado;
        QTest::newRow("sin monto") << "" << QStringList{} << "" << "x" << monto;
        QTest::newRow("cero") << "" << kPicks << "0" << "1" << monto;
        QTest::newRow("negativo") << "" << kPicks << "-5" << "1" << monto;
        QTest::newRow("texto") << "" << kPicks << "diez" << "1" << monto;
        QTest::newRow("veces cero") << "" << kPicks << "10" << "0" << veces;
        QTest::newRow("veces de mas") << "" << kPicks << "10" << "11" << veces;
        QTest::newRow("veces texto") << "" << QStringList{} << "10" << "dos" << veces;
        QTest::newRow("mayor al maximo") << "" << QStringList{} << "1000,01" << "1" << "EL MONTO DEBE SER MENOR Bs. 1.000,00";
        QTest::newRow("maximo por veces") << "" << kPicks << "101" << "10" << "EL MONTO DEBE SER MENOR Bs. 1.000,00";
        QTest::newRow("enorme") << "UPDATE grupos SET apuesta_max_mc = 0" << kPicks << "99999999999999" << "1"
                                << "EL MONTO DEBE SER MENOR Bs. 1.000.000.000,00";
        QTest::newRow("pierna vacia") << "" << QStringList{"1", "2", "", "4", "5", "6", "1"} << "10" << "1" << caballos;
        QTest::newRow("pierna cero") << "" << QStringList{"0", "2", "3", "4", "5", "6", "1"} << "10" << "1" << caballos;
        QTest::newRow("sobre cab_max") << "UPDATE grupos SET cab_max = 8" << QStringList{"1", "9", "3", "4", "5", "6", "1"}
                                       << "10" << "1" << caballos;
        QTest::newRow("no corre") << "" << QStringList{"1", "2", "3", "4", "5", "6", "7"} << "10" << "1" << caballos;
        QTest::newRow("retirado") << "UPDATE carreras SET retirado = 1 WHERE carrera = 4 AND nu_caballo = 4"
                                  << kPicks << "10" << "1" << caballos;
        QTest::newRow("seis piernas") << "" << QStringList{"1", "2", "3", "4", "5", "6"} << "10" << "1" << caballos;
    }

    void refusals() {
        QFETCH(QString, preparar);
        QFETCH(QStringList, picks);
        QFETCH(QString, monto);
        QFETCH(QString, veces);
        QFETCH(QString, texto);
        if (!preparar.isEmpty()) db().exec(preparar.toStdString());
        const QStringList antes = fotoMacuare();
        VentaMacuare v = nueva();
        QVERIFY(!v.vender(pedido(monto, veces, picks)).vendido);
        QCOMPARE(env->dialogs.last().text, texto);
        QCOMPARE(fotoMacuare(), antes);
        QVERIFY(!QFile::exists(puerto));
    }

    // The code is "5", the sale's month and day, and the insert's own number;
    // the name is kept and printed as typed; the register adds the
    // combination, then marks it and adds to its amount.
    void saleAndCombinationRegister() {
        VentaMacuare v = nueva();
        const QString nombre = "MARÍA D'ALESSANDRO \"LA NEGRA\"";
        const auto a = vender(v, pedido("25,50", "2", kPicks, nombre));
        QVERIFY(a.codigo.startsWith("5" + env->clock.today().toString("MMdd")));
        QCOMPARE(a.codigo, "5" + env->clock.today().toString("MMdd") + QString::number(a.numero));
        const Row t = db().query("SELECT * FROM macuares WHERE numero = ?", {a.numero}).first();
        QCOMPARE(t.text("boleto"), a.codigo);
        QCOMPARE(t.text("nombre"), nombre);
        QCOMPARE(t.text("combinacion"), QString("1-2-3-4-5-6-1"));
        QCOMPARE(t.number("monto"), 25.5);
        QCOMPARE(t.integer("veces"), 2LL);
        QCOMPARE(t.text("taquilla"), QString("LOS PINOS"));
        QCOMPARE(t.text("grupo"), QString("08"));
        QCOMPARE(t.integer("estatus"), 0LL);
        QCOMPARE(textOf(db(), "SELECT concat_ws(':', estatus, monto) FROM combinaciones_general WHERE combinacion = ?",
                        {"1-2-3-4-5-6-1"}),
                 QString("0:51"));
        vender(v, pedido("10"));
        QCOMPARE(textOf(db(), "SELECT concat_ws(':', count(*), max(estatus), sum(monto)) FROM combinaciones_general"),
                 QString("1:1:61"));
        vender(v, pedido("10", "1", {"2", "2", "3", "4", "5", "6", "1"}));
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM combinaciones_general"), 2.0);
        // The printed ticket, raw mode.
        const QString dia = fechaVista(fecha);
        QVERIFY(leerPuerto(puerto).startsWith(crudo(
            {"VENTA MACUARE", "----------------------------------------", "CENTRO HIPICO LOS PINOS", "FECHA: " + dia,
             "HORA: 10:30:00", "BOLETO: " + a.codigo, "NOMBRE: " + nombre, "VECES: 2",
             "C1(1) C2(2) C3(3) C4(4) C5(5) C6(6) C7(1)", "Monto Apostado: Bs. 25,50",
             "----------------------------------------", "BOLETO CADUCA A LOS 3 DIAS",
             "----------------------------------------"})));
        // The day's list, newest first, and the running totals.
        const auto lista = v.Command19();
        QCOMPARE(lista.size(), 3);
        QCOMPARE(lista.last().codigo, a.codigo);
        QCOMPARE(encabezadosListaMacuare().join('|'), QString(" BOLETO | V1 | V2 | V3 | V4 | V5 | V6 | V7 | MONTO | VECES | GRUPO "));
        const TotalesDia td = v.Totalizar_Dia();
        QCOMPARE(td.venta, 71.0);
        QCOMPARE(td.cantVenta, 3LL);
    }

    // The quota of a combination counts every booth of the group: exactly at
    // the limit sells, one cent over does not, and booths selling at once
    // never pass it.
    void quotaAcrossBooths() {
        db().exec("UPDATE grupos SET cupo_mc = 300, apuesta_max_mc = 0");
        const Session sesion = env->ctx.session;
        CabinaMC otra(*env, sesion);
        VentaMacuare v = nueva();
        vender(v, pedido("100", "2"));
        QVERIFY(!otra.venta.vender(pedido("100,01")).vendido);
        QCOMPARE(otra.dialogs.last().text, QString("EL MONTO ES MAYOR AL PERMITIDO, DISPONIBLE: Bs. 100,00"));
        QVERIFY(otra.venta.vender(pedido("100")).vendido);
        QVERIFY(!otra.venta.vender(pedido("0,01")).vendido);
        QCOMPARE(otra.dialogs.last().text, QString("EL MONTO ES MAYOR AL PERMITIDO, DISPONIBLE: Bs. 0,00"));
        // Another group's quota is its own.
        entrar(*env, "taquilla1");
        VentaMacuare g07 = nueva();
        QVERIFY(g07.vender(pedido("300")).vendido);

        db().exec("DELETE FROM macuares");
        db().exec("DELETE FROM combinaciones_general");
        constexpr int kCabinas = 6, kIntentos = 8;
        std::vector<std::unique_ptr<CabinaMC>> cabinas;
        for (int i = 0; i < kCabinas; ++i) cabinas.push_back(std::make_unique<CabinaMC>(*env, sesion));
        std::vector<std::thread> hilos;
        std::atomic<int> vendidos{0};
        for (auto& c : cabinas)
            hilos.emplace_back([&c, &vendidos] {
                for (int k = 0; k < kIntentos; ++k)
                    if (c->venta.vender(pedido("7,5")).vendido) ++vendidos;
            });
        for (auto& h : hilos) h.join();
        QCOMPARE(vendidos.load(), 40);  // 40 x 7,50 = 300
        QCOMPARE(numberOf(db(), "SELECT sum(monto * veces) FROM macuares WHERE grupo = '08'"), 300.0);
        QCOMPARE(textOf(db(), "SELECT concat_ws(':', count(*), sum(monto)) FROM combinaciones_general"),
                 QString("1:300"));
        QCOMPARE(numberOf(db(), "SELECT count(distinct boleto) = count(*) FROM macuares"), 1.0);
    }

    // Closing waits for the sales under way; no ticket is sold after it.
    void closeAgainstBooths() {
        const Session sesion = env->ctx.session;
        std::vector<std::unique_ptr<CabinaMC>> cabinas;
        for (int i = 0; i < 4; ++i) cabinas.push_back(std::make_unique<CabinaMC>(*env, sesion));
        std::atomic<bool> cerrado{false}, fin{false};
        std::atomic<int> trasCierre{0};
        std::vector<std::thread> hilos;
        for (int i = 0; i < 4; ++i)
            hilos.emplace_back([&, i] {
                int k = 0;
                while (!fin) {
                    const bool despues = cerrado;
                    QStringList p = kPicks;
                    p[0] = QString::number(1 + (k++ + i) % 6);
                    if (cabinas[i]->venta.vender(pedido("1", "1", p)).vendido && despues) ++trasCierre;
                }
            });
        QTest::qWait(300);
        ScriptedDialogs dlg;
        FixedClock reloj;
        Context admin(env->config, dlg, reloj);
        admin.cnServidor = env->connect();
        QVERIFY(ProcesoMacuare(admin).abrir(fecha, false));
        const double ultimo = numberOf(db(), "SELECT coalesce(max(numero), 0) FROM macuares");
        cerrado = true;
        QTest::qWait(200);
        fin = true;
        for (auto& h : hilos) h.join();
        QVERIFY(ultimo > 0);
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM macuares WHERE numero > ?", {ultimo}), 0.0);
        QCOMPARE(trasCierre.load(), 0);
        VentaMacuare v = nueva();
        QCOMPARE(v.estado(), QString("CERRADO"));
    }

    // A winner is paid once, whichever of two booths presses first; the
    // group's day row moves once; the slip is printed.
    void paidOnceFromTwoConnections() {
        VentaMacuare v = nueva();
        const auto a = vender(v, pedido("10"));
        db().exec("UPDATE macuares SET estatus = 1, cobrado = 1234.5 WHERE numero = ?", {a.numero});
        const Session sesion = env->ctx.session;
        CabinaMC uno(*env, sesion), dos(*env, sesion);
        const auto c1 = uno.venta.buscarBoletoCobro(a.codigo);
        const auto c2 = dos.venta.buscarBoletoCobro(a.codigo);
        QVERIFY(c1.pagable && c2.pagable);
        QCOMPARE(c1.mensaje, QString("BOLETO GANADOR"));
        bool p1 = false, p2 = false;
        std::thread t1([&] { p1 = uno.venta.cobrarBoleto(); });
        std::thread t2([&] { p2 = dos.venta.cobrarBoleto(); });
        t1.join();
        t2.join();
        QVERIFY(p1 != p2);
        QCOMPARE(textOf(db(), "SELECT concat(estatus, ':', fecha_cobro) FROM macuares WHERE numero = ?", {a.numero}),
                 "2:" + fecha);
        QCOMPARE(textOf(db(), "SELECT concat_ws(':', premios, saldo, monto_porpagar) FROM ventas_mc_general WHERE "
                              "grupo = '08' AND fecha = ?",
                        {fecha}),
                 QString("1234.5:-1234.5:-1234.5"));
        (p1 ? dos : uno).dialogs.clear();
        // Looked up again: already paid. A ticket of another game's code is not found.
        QVERIFY(!v.buscarBoletoCobro(a.codigo).pagable);
        QCOMPARE(env->dialogs.last().text, QString("BOLETO YA PAGADO"));
        QVERIFY(!v.buscarBoletoCobro("1" + a.codigo.mid(1)).pagable);
        QCOMPARE(env->dialogs.last().text, QString("VERIFIQUE EL NUMERO DEL BOLETO"));
    }

    void paymentSlip() {
        QCOMPARE(reciboMacuare(DatosCobro{"LOS PINOS", "taquilla2", "2026-11-23", "10:30:00", "51123100", 50, false}, false)
                     .lineas,
                 (QStringList{"MACUARE", "CENTRO HIPICO LOS PINOS", "FECHA: 23-11-2026", "HORA: 10:30:00",
                              "BOLETO: 51123100", "MONTO COBRADO : Bs. 50,00",
                              "            GRACIAS POR JUGAR!            ", QString(40, '*')}));
        QCOMPARE(reciboMacuare(DatosCobro{}, true).lineas.first(), QString("           COBRO DE JUGADA MACUARE"));
        const Impreso t = ticketMacuare(env->ctx, BoletoMacuareVendido{1, "51123100", {1, 2, 3, 4, 5, 6, 7}, 10, 1, "A",
                                                                        "2026-11-23", "10:00:00", {}},
                                        3, true);
        QCOMPARE(t.lineas.first(), QString("              VENTA MACUARE"));
        QVERIFY(t.lineas.contains("MONTO JUGADO: Bs. 10,00"));
        QCOMPARE(t.codigoBarras, QString("51123100"));
    }

    // The void by code: unknown, not this booth's status, closed, then voided
    // with its audit row and the combination's amount taken back.
    void voidByCode() {
        VentaMacuare v = nueva();
        const auto a = vender(v, pedido("10", "3"));
        const auto b = vender(v, pedido("5"));
        QVERIFY(!v.anularPorCodigo("5999999"));
        QCOMPARE(env->dialogs.last().text, QString("BOLETO NO EXISTE"));
        db().exec("UPDATE macuares SET estatus = 1, cobrado = 10 WHERE numero = ?", {b.numero});
        QVERIFY(!v.anularPorCodigo(b.codigo));
        QCOMPARE(env->dialogs.last().text, QString("NO SE PUEDE ANULAR ESTE BOLETO"));
        db().exec("UPDATE configuracion SET venta_macuare = 0");
        QVERIFY(!v.anularPorCodigo(a.codigo));
        QCOMPARE(env->dialogs.last().text, QString("LA CARRERA ESTA CERRADA, NO SE PUEDEN HACER CAMBIOS"));
        db().exec("UPDATE configuracion SET venta_macuare = 1");
        // The first leg's horse's race-card row counts the tickets on it; the
        // close writes that row, and a void (or sale) reads its open flag
        // under the row's lock: closed there alone, nothing is voided or sold.
        const auto primera = [&](const char* cambio) {
            db().exec(std::string("UPDATE carreras SET ") + cambio +
                          " WHERE fecha = ? AND id_hipodromo = 1 AND carrera = 1 AND nu_caballo = 1",
                      {fecha});
        };
        const auto contados = [&] {
            return numberOf(db(), "SELECT boletos_mc FROM carreras WHERE fecha = ? AND id_hipodromo = 1 AND carrera = 1 "
                                  "AND nu_caballo = 1",
                            {fecha});
        };
        QCOMPARE(contados(), 2.0);
        primera("venta_mc = 0");
        QVERIFY(!v.anularPorCodigo(a.codigo));
        QCOMPARE(env->dialogs.last().text, QString("LA CARRERA ESTA CERRADA, NO SE PUEDEN HACER CAMBIOS"));
        QVERIFY(!v.vender(pedido("5")).vendido);
        QCOMPARE(env->dialogs.last().text, QString("LA CARRERA ESTA CERRADA, NO SE PUEDEN HACER CAMBIOS"));
        primera("venta_mc = 1");
        QVERIFY(v.anularPorCodigo(a.codigo));
        QCOMPARE(env->dialogs.last().text, QString("BOLETO ANULADO CON EXITO"));
        QCOMPARE(contados(), 1.0);
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM macuares WHERE numero = ?", {a.numero}), 0.0);
        QCOMPARE(textOf(db(), "SELECT concat_ws(':', boleto, estatus, monto, veces, motivo, usuario) FROM bitacora_mc"),
                 a.codigo + ":5:10:3:ANULADO:taquilla2");
        QCOMPARE(numberOf(db(), "SELECT monto FROM combinaciones_general"), 5.0);
        QCOMPARE(v.Totalizar_Dia().anulados, 1LL);
    }

    void printedSummary() {
        VentaMacuare v = nueva();
        vender(v, pedido("10", "2"));
        QFile::remove(puerto);
        QVERIFY(v.imprimirResumen());
        const QString t = leerPuerto(puerto);
        QVERIFY(t.startsWith("-- VENTA MACUARE --\r\nRESUMEN DE VENTAS\r\nCENTRO HIPICO LOS PINOS\r\n"));
        QVERIFY(t.contains("VENTA : Bs. 20,00\r\n"));
        QVERIFY(t.contains("BOLETOS VENDIDOS : 1\r\n"));
        QCOMPARE(resumenMacuare(env->ctx, true).lineas.first(), QString("            --- MACUARE ---"));
    }
};

QTEST_GUILESS_MAIN(TstMacuare)
#include "tst_macuare.moc"
