// The fixed-table booth against the real server: each refusal of the sale
// in its order with nothing written, the quota at and over its boundary, the
// summary declined, the code and the printed pieces, a ticket paid exactly
// once by two booths, the void of the newest ticket only, and a quota never
// oversold by booths selling together.
#include "BoothFixture.h"

#include "admin/BoletosEscritorio.h"
#include "admin/Form_Admin_TF.h"
#include "core/Connections.h"
#include "admin/EscritorioTablaFija.h"
#include "admin/GerenciaTablaFija.h"
#include "sales/Form_Pant_TF.h"
#include "sales/VentaTablaFija.h"
#include "schema/Demo.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTableView>
#include <QtTest>
#include <atomic>
#include <thread>

using namespace hipico;
using namespace hipico::test;

namespace {

const QString kVerifique = "VERIFIQUE E INTENTE DE NUEVO";

// A booth of its own connection selling the fixed table.
struct TaquillaTF {
    TaquillaTF(TestEnv& env, const Session& s) : t(env, s), venta(t.ctx) { venta.cargar(); }
    Taquilla t;
    VentaTablaFija venta;
};

}  // namespace

class TstTablaFija : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QTemporaryDir carpeta;
    QString puerto;

    Db& db() { return env->db(); }
    QStringList fotoTF() { return foto(db(), {"tablafija", "ventas_tf", "ventas_tf_general", "bitacora_tf"}); }
    // A sale accepted at the summary; the code ("" when refused).
    QString vender(VentaTablaFija& v, const QString& carrera, const QString& caballo, const QString& tablas) {
        env->dialogs.yes();
        const auto r = v.procesarVenta(carrera, caballo, tablas);
        return r.resultado == VentaTablaFija::Resultado::Vendido ? r.boleto.codigo : QString();
    }
    // The booth's machine has no local schema: its print settings are its own file's.
    void sinLocal() {
        env->ctx.cnLocal.reset();
        Db::open(cadenaLocalSinBase(env->config))
            ->exec(("DROP DATABASE IF EXISTS `" + env->config.localBase + "`").toStdString());
    }
    long long numeroDe(const QString& codigo) {
        return Row::toInteger(db().scalar("SELECT numero FROM tablafija WHERE nu_boleto = ?", {codigo}));
    }

private slots:
    void initTestCase() {
        env = entorno("tablafija", carpeta.path());
        puerto = carpeta.filePath("boletos.prn");
        sinLocal();
    }
    void init() {
        env->loadDemo();
        entrar(*env, "tablafija");
        prepararImpresion(env->config, puerto);
        QFile::remove(puerto);
    }
    void cleanup() { cerrarDialogos(env->dialogs); }

    void ventaRechazada_data() {
        QTest::addColumn<QStringList>("preparar");
        QTest::addColumn<QStringList>("venta");  // race, horse, tables
        QTest::addColumn<QString>("texto");
        const QString tablas = "EL NUMERO DE TABLAS NO ES VALIDO";
        const QString caballo = "EL NUMERO DE CABALLO NO ES VALIDO";
        const QString cerrada = "LA CARRERA ESTA CERRADA, NO SE PUEDEN HACER CAMBIOS";
        auto fila = [](const char* n, const QStringList& p, const QStringList& v, const QString& t) {
            QTest::newRow(n) << p << v << t;
        };
        // In the order the booth checks them: each row's sale passes every earlier check.
        fila("tables zero", {}, {"1", "3", "0"}, tablas);
        fila("tables negative", {}, {"1", "3", "-2"}, tablas);
        fila("tables not a number", {}, {"1", "3", "dos"}, tablas);
        fila("tables with decimals", {}, {"1", "3", "1,5"}, tablas);
        fila("tables empty", {}, {"1", "3", ""}, tablas);
        fila("tables huge", {}, {"1", "3", "99999999999999999999"}, tablas);
        fila("tables before horse", {}, {"1", "0", "0"}, tablas);
        fila("horse 0", {}, {"1", "0", "2"}, caballo);
        fila("horse 15", {}, {"1", "15", "2"}, caballo);
        fila("horse 16", {}, {"1", "16", "2"}, caballo);
        fila("horse 15, group field of 16", {"update grupos set cab_max=16"}, {"1", "15", "2"}, caballo);
        fila("horse not a number", {}, {"1", "tres", "2"}, caballo);
        fila("horse before race", {}, {"9", "0", "2"}, caballo);
        fila("race not for sale", {}, {"2", "3", "2"}, "EL NUMERO DE CARRERA NO ESTA PERMITIDO PARA LA VENTA");
        fila("race empty", {}, {"", "3", "2"}, "EL NUMERO DE CARRERA NO ESTA PERMITIDO PARA LA VENTA");
        fila("horse not in the race", {}, {"1", "9", "2"}, "EL NUMERO DEL CABALLO NO EXISTE PARA ESTA CARRERA");
        fila("scratched for the table",
             {"update carreras set retirado_tf=1 where carrera=1 and id_hipodromo=1 and nu_caballo=3"},
             {"1", "3", "2"}, "EL CABALLO ESTA RETIRADO");
        fila("scratched before closed",
             {"update carreras set retirado_tf=1, venta_tf=0 where carrera=1 and id_hipodromo=1 and nu_caballo=3"},
             {"1", "3", "2"}, "EL CABALLO ESTA RETIRADO");
        fila("pool closed", {"update carreras set venta_tf=0 where carrera=1"}, {"1", "3", "2"}, cerrada);
        fila("race blocked", {"update carreras set bloqueotf=1 where carrera=1"}, {"1", "3", "2"}, cerrada);
        fila("race processed", {"update carreras set estado_tf=1 where carrera=1"}, {"1", "3", "2"}, cerrada);
        fila("group without the fixed table", {"update grupos set venta_tf=0 where grupo='08'"}, {"1", "3", "2"},
             cerrada);
        fila("horse without a price", {"update carreras set valor_tf=0 where carrera=1 and nu_caballo=3"},
             {"1", "3", "2"}, cerrada);
        fila("quota blocked", {"update venta_cupo_tf set cab3=0 where ch='LOS PINOS'"}, {"1", "3", "2"},
             "SE HA LLENADO EL CUPO DE VENTA A ESTE CABALLO");
        fila("quota before tables per ticket", {"update venta_cupo_tf set cab3=5", "update grupos set cupoviptf=4"},
             {"1", "3", "6"}, "SE HA LLENADO EL CUPO DE VENTA A ESTE CABALLO");
        fila("tables per ticket", {"update grupos set cupoviptf=4"}, {"1", "3", "5"},
             "EL Nº DE TABLAS ES MAYOR AL PERMITIDO, PERMITIDO: 4");
        fila("money per ticket, the race's", {}, {"1", "3", "21"}, "EL MONTO ES MAYOR AL PERMITIDO, DISPONIBLE: Bs. 100,00");
        fila("money per ticket, the group's",
             {"update carreras set apuesta_max_tf=0", "update grupos set apuesta_max_tf=30"}, {"1", "3", "7"},
             "EL MONTO ES MAYOR AL PERMITIDO, DISPONIBLE: Bs. 30,00");
        fila("SQL in the fields", {}, {"1'; drop table tablafija; --", "3", "2"},
             "EL NUMERO DE CARRERA NO ESTA PERMITIDO PARA LA VENTA");
    }
    void ventaRechazada() {
        QFETCH(QStringList, preparar);
        QFETCH(QStringList, venta);
        QFETCH(QString, texto);
        for (const QString& sql : preparar) db().exec(sql.toStdString());
        VentaTablaFija v(env->ctx);
        v.cargar();
        const QStringList antes = fotoTF();
        const auto r = v.procesarVenta(venta[0], venta[1], venta[2]);
        QCOMPARE(int(r.resultado), int(VentaTablaFija::Resultado::Rechazado));
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().title, kVerifique);
        QCOMPARE(env->dialogs.last().text, texto);
        QCOMPARE(int(env->dialogs.last().icon), int(Icon::Critical));
        QCOMPARE(fotoTF(), antes);
        QVERIFY(!QFile::exists(puerto));
    }

    // The summary the operator sees, declined: nothing written, nothing printed.
    void resumenDeclinado() {
        VentaTablaFija v(env->ctx);
        v.cargar();
        const QStringList antes = fotoTF();
        env->dialogs.no();
        const auto r = v.procesarVenta("1", "3", "4");
        QCOMPARE(int(r.resultado), int(VentaTablaFija::Resultado::Declinado));
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().title, QString("VERIFIQUE LA INFORMACION"));
        QCOMPARE(env->dialogs.last().text, QString("    4  TABLAS  AL CAB: 3    POR: Bs. 20,00  BSF"));
        QCOMPARE(fotoTF(), antes);
        QVERIFY(!QFile::exists(puerto));
    }

    // The race closed while the operator read the summary: the sale refuses with its own text.
    void cerradaTrasElResumen() {
        struct Cierra : ScriptedDialogs {
            Db* db = nullptr;
            bool confirm(const QString& t, const QString& x, bool n, Icon i) override {
                db->exec("update carreras set venta_tf=0 where carrera=1");
                return ScriptedDialogs::confirm(t, x, n, i);
            }
        };
        Taquilla t(*env, env->ctx.session);
        Cierra cierra;
        cierra.db = &db();
        Context ctx(env->config, cierra, t.clock);
        ctx.cnServidor = env->connect();
        ctx.session = env->ctx.session;
        VentaTablaFija v(ctx);
        cierra.yes();
        const QStringList antes = fotoTF();
        QCOMPARE(int(v.procesarVenta("1", "3", "2").resultado), int(VentaTablaFija::Resultado::Rechazado));
        QCOMPARE(cierra.last().text, QString("LA CARRERA SE ENCUENTRA CERRADA"));
        QCOMPARE(fotoTF(), antes);
    }

    // The quota by group: at the boundary it sells, one over it refuses; the
    // centre's other group still has its own; with the centre's mode they share it.
    void cupo() {
        VentaTablaFija v(env->ctx);
        v.cargar();
        for (const char* t : {"20", "20", "10"}) QVERIFY(!vender(v, "1", "3", t).isEmpty());
        env->dialogs.clear();
        QVERIFY(vender(v, "1", "3", "1").isEmpty());
        QCOMPARE(env->dialogs.last().text, QString("SE HA LLENADO EL CUPO DE VENTA A ESTE CABALLO"));
        env->dialogs.clear();
        QCOMPARE(numberOf(db(), "SELECT sum(tablas) FROM tablafija WHERE caballo=3"), 50.0);
        // Another horse has its own quota.
        QVERIFY(!vender(v, "1", "4", "1").isEmpty());
        // Group 07 of the same centre: its own count.
        entrar(*env, "taquilla1");
        VentaTablaFija otro(env->ctx);
        QVERIFY(!vender(otro, "1", "3", "20").isEmpty());
        // The centre's mode: both groups count together.
        db().exec("update grupos set cupo_tf_opcion=1");
        env->dialogs.clear();
        QVERIFY(vender(otro, "1", "3", "1").isEmpty());
        QCOMPARE(env->dialogs.last().text, QString("SE HA LLENADO EL CUPO DE VENTA A ESTE CABALLO"));
        env->dialogs.clear();
    }

    // The sold ticket: its row, its code (prefix "2", month, day, number), its printed lines.
    void venta() {
        db().exec("update grupos set impresion_datos=0");
        VentaTablaFija v(env->ctx);
        v.cargar();
        const QString codigo = vender(v, "1", "3", "4");
        QVERIFY(!codigo.isEmpty());
        const Row r = db().query("SELECT * FROM tablafija WHERE nu_boleto = ?", {codigo}).first();
        const QDate hoy = desdeFechaSql(fechaTrabajo(env->ctx));
        QCOMPARE(codigo, "2" + hoy.toString("MMdd") + QString::number(r.integer("numero")));
        QCOMPARE(r.number("tablas"), 4.0);
        QCOMPARE(r.number("monto"), 20.0);
        QCOMPARE(r.text("ch"), QString("LOS PINOS"));
        QCOMPARE(r.text("grupo"), QString("08"));
        QCOMPARE(r.integer("estatus"), 0LL);
        QCOMPARE(v.ultimoBoleto()->codigo, codigo);
        const QString hora = r.text("hora");
        const QStringList lineas{"VENTA TABLAS",
                                 "CENTRO HIPICO LOS PINOS",
                                 "TAQUILLA tablafija",
                                 "FECHA: " + fechaVista(hoy),
                                 "HORA: " + hora,
                                 "BOLETO: " + codigo,
                                 "HIPODROMO: LA RINCONADA",
                                 "CARRERA: 1",
                                 "CABALLO: (3) " + textOf(db(), "SELECT caballo FROM carreras WHERE carrera=1 AND "
                                                                "id_hipodromo=1 AND nu_caballo=3"),
                                 "TABLAS: 4",
                                 "COSTO DEL BOLETO: Bs. 20,00",
                                 "GRACIAS POR SU JUGADA",
                                 "BOLETO CADUCA A LOS 3 Dias"};
        QCOMPARE(leerPuerto(puerto), crudo(lineas));
        // The graphic mode: its heading, and the code as the barcode.
        Row grupo = parametrosTablaFija(env->ctx, "1", "3");
        const Impreso g = ticketTablaFija(env->ctx, grupo, *v.ultimoBoleto(), true);
        QCOMPARE(g.lineas.first(), QString("                     VENTA TABLAS"));
        QCOMPARE(g.lineas.mid(1), lineas.mid(1));
        QCOMPARE(g.codigoBarras, codigo);
        QVERIFY(ticketTablaFija(env->ctx, grupo, *v.ultimoBoleto(), false).codigoBarras.isEmpty());
    }

    void recibo_data() {
        QTest::addColumn<bool>("grafico");
        QTest::newRow("raw") << false;
        QTest::newRow("graphic") << true;
    }
    void recibo() {
        QFETCH(bool, grafico);
        const Impreso r = reciboTablaFija({"LOS PINOS", "tablafija", "2026-11-23", "10:15:00", "2112310", 40, false},
                                          grafico);
        const QString s = "---------------------------------------";
        QCOMPARE(r.lineas, (QStringList{grafico ? "                        COBRO DE JUGADA TF" : "COBRO TABLAS", s,
                                        "CENTRO HIPICO LOS PINOS", "FECHA: 23-11-2026", "HORA: 10:15:00",
                                        "BOLETO: 2112310", "TAQUILLA tablafija", s, "MONTO COBRADO : Bs. 40,00", s}));
    }

    // The ticket and the payment slip as each printer mode puts them out.
    void impresoEnCadaModo_data() { filasModosImpresora(); }
    void impresoEnCadaModo() {
        QFETCH(QString, modo);
        const ImpresoraDePrueba impresora(env->config, carpeta.path(), modo, puerto);
        // What the last piece put out, line by line.
        const auto salida = [&] {
            QStringList lineas = impresora.lineas();
            if (modo != "WINDOWS2:") lineas.removeLast();  // the paper feed
            impresora.vaciar();
            return lineas;
        };
        VentaTablaFija v(env->ctx);
        v.cargar();
        const QString codigo = vender(v, "1", "3", "4");
        const QStringList ticket = salida();
        QCOMPARE(ticket.first(), QString("VENTA TABLAS"));
        QVERIFY2(ticket.contains("BOLETO: " + codigo) && ticket.contains("TABLAS: 4") &&
                     ticket.contains("COSTO DEL BOLETO: Bs. 20,00"),
                 qPrintable(ticket.join('|')));
        db().exec("UPDATE tablafija SET estatus=1, cobrado=60 WHERE nu_boleto=?", {codigo});
        copiarAlGrupo(db(), juegoTablaFija(), codigo);
        QVERIFY(v.buscarBoletoCobro(codigo).pagable);
        QVERIFY(v.cobrarBoleto());
        const QStringList recibo = salida();
        QCOMPARE(recibo.first(), QString(modo == "WINDOWS2:" ? "COBRO DE JUGADA TF" : "COBRO TABLAS"));
        QVERIFY2(recibo.contains("BOLETO: " + codigo) && recibo.contains("MONTO COBRADO : Bs. 60,00"),
                 qPrintable(recibo.join('|')));
    }

    // The payment lookup's outcomes and the payment: both copies and the day row.
    void cobro_data() {
        QTest::addColumn<QString>("cambio");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<bool>("pagable");
        QTest::newRow("winner") << "estatus=1, cobrado=60" << "CABALLO GANADOR" << true;
        QTest::newRow("refund") << "estatus=4, cobrado=20" << "CABALLO RETIRADO" << true;
        QTest::newRow("not a winner") << "" << "BOLETO NO GANADOR" << false;
        QTest::newRow("paid") << "estatus=2, cobrado=60" << "BOLETO YA PAGADO" << false;
        QTest::newRow("another centre") << "estatus=1, cobrado=60, ch='MARACAY'"
                                        << "EL BOLETO NO PERTENECE A ESTA TAQUILLA" << false;
        QTest::newRow("earlier day") << "estatus=1, cobrado=60, fecha=date_sub(fecha, interval 1 day)"
                                     << "ATENCION ESTE BOLETO ES DE UN DIA ANTERIOR, DEBE PEDIR EL DINERO A LA "
                                        "ADMINISTRACION"
                                     << false;
        QTest::newRow("winner-game code") << "code" << "VERIFIQUE EL NUMERO DEL BOLETO" << false;
    }
    void cobro() {
        QFETCH(QString, cambio);
        QFETCH(QString, texto);
        QFETCH(bool, pagable);
        VentaTablaFija v(env->ctx);
        v.cargar();
        QString codigo = vender(v, "1", "3", "4");
        if (cambio == "code")
            codigo = venderBoleto(db(), desdeFechaSql(fechaTrabajo(env->ctx)), 1, 3, 2, "08", "LOS PINOS", 1, 25).codigo;
        else if (!cambio.isEmpty())
            db().exec(QString("UPDATE tablafija SET %1 WHERE nu_boleto=?").arg(cambio).toStdString(), {codigo});
        copiarAlGrupo(db(), juegoTablaFija(), codigo);
        env->dialogs.clear();
        QFile::remove(puerto);
        const ConsultaCobro c = v.buscarBoletoCobro(codigo);
        QCOMPARE(c.pagable, pagable);
        if (!pagable) {
            QCOMPARE(env->dialogs.last().text, texto);
            return;
        }
        QCOMPARE(c.mensaje, texto);
        QVERIFY(v.cobrarBoleto());
        const Row t = db().query("SELECT * FROM tablafija WHERE nu_boleto=?", {codigo}).first();
        const long long pagado = c.estatus == 1 ? 2 : 3;
        QCOMPARE(t.integer("estatus"), pagado);
        QCOMPARE(t.text("fecha_cobro"), fechaTrabajo(env->ctx));
        QCOMPARE(numberOf(db(), "SELECT estatus FROM ventas_tf WHERE nu_boleto=?", {codigo}), double(pagado));
        QCOMPARE(numberOf(db(), "SELECT premios FROM ventas_tf_general WHERE grupo='08'"), c.monto);
        QVERIFY(leerPuerto(puerto).contains("MONTO COBRADO : " + formatoMoneda(c.monto)));
        // Paid once: the second lookup says so.
        env->dialogs.clear();
        QVERIFY(!v.buscarBoletoCobro(codigo).pagable);
        QCOMPARE(env->dialogs.last().text, QString("BOLETO YA PAGADO"));
    }

    // Two booths press "COBRAR" on the same ticket at the same moment.
    void pagoUnico() {
        VentaTablaFija v(env->ctx);
        QVector<QString> codigos;
        for (int i = 0; i < 10; ++i) codigos << vender(v, "1", QString::number(1 + i % 5), "2");
        db().exec("update tablafija set estatus=1, cobrado=tablas*7");
        TaquillaTF a(*env, env->ctx.session), b(*env, env->ctx.session);
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
        }
        QCOMPARE(pagos, 10);
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM tablafija WHERE estatus <> 2"), 0.0);
        QCOMPARE(numberOf(db(), "SELECT premios FROM ventas_tf_general WHERE grupo='08'"), 140.0);
    }

    // The void takes the centre's newest ticket, and only that one.
    void anulaElMasNuevo() {
        VentaTablaFija v(env->ctx);
        const QString viejo = vender(v, "1", "3", "2");
        const QString nuevo = vender(v, "1", "4", "3");
        env->dialogs.clear();
        env->dialogs.yes().type("CLIENTE SE ARREPINTIO");
        QVERIFY(v.anularUltimo());
        QVERIFY(env->dialogs.shown().first().text.contains("BOLETO: " + nuevo));
        QCOMPARE(env->dialogs.last().text, QString("BOLETO ANULADO CON EXITO"));
        QCOMPARE(textOf(db(), "SELECT group_concat(nu_boleto) FROM tablafija"), viejo);
        const Row b = db().query("SELECT * FROM bitacora_tf").first();
        QCOMPARE(b.text("nu_boleto"), nuevo);
        QCOMPARE(b.integer("estatus"), 5LL);
        QCOMPARE(b.number("tablas"), 3.0);
        QCOMPARE(b.number("monto"), 15.0);
        QCOMPARE(b.text("taquilla"), QString("LOS PINOS"));
        QCOMPARE(b.text("motivo"), QString("CLIENTE SE ARREPINTIO"));
        QVERIFY(!v.ultimoBoleto());
        // Declined at the ticket shown: nothing goes.
        env->dialogs.clear();
        env->dialogs.no();
        QVERIFY(!v.anularUltimo());
        QCOMPARE(contar(db(), "tablafija"), 1LL);
    }

    void anulacionRechazada_data() {
        QTest::addColumn<QStringList>("preparar");
        QTest::addColumn<QString>("texto");
        QTest::newRow("closed race") << QStringList{"update carreras set venta_tf=0 where carrera=1"}
                                     << "LA CARRERA ESTA CERRADA, NO SE PUEDEN HACER CAMBIOS";
        QTest::newRow("processed race") << QStringList{"update carreras set estado_tf=1 where carrera=1"}
                                        << "LA CARRERA ESTA CERRADA, NO SE PUEDEN HACER CAMBIOS";
        QTest::newRow("winner") << QStringList{"update tablafija set estatus=1, cobrado=30"}
                                << "EL BOLETO NO SE PUEDE ANULAR";
        QTest::newRow("no ticket") << QStringList{"delete from tablafija"}
                                   << "EL BOLETO NO SE PUEDE ANULAR NO SE ENCUENTRA EL CODIGO";
        QTest::newRow("another centre's newest") << QStringList{"update tablafija set ch='MARACAY'"}
                                                 << "EL BOLETO NO SE PUEDE ANULAR NO SE ENCUENTRA EL CODIGO";
    }
    void anulacionRechazada() {
        QFETCH(QStringList, preparar);
        QFETCH(QString, texto);
        VentaTablaFija v(env->ctx);
        vender(v, "1", "3", "2");
        for (const QString& sql : preparar) db().exec(sql.toStdString());
        env->dialogs.clear();
        env->dialogs.yes().type("ANULADO");
        const QStringList antes = fotoTF();
        QVERIFY(!v.anularUltimo());
        QCOMPARE(env->dialogs.last().text, texto);
        QCOMPARE(fotoTF(), antes);
        env->dialogs.clear();
    }

    // Processing: winners and table-scratched refunds become due, paid
    // tickets stay, re-processing resets and settles again; the desk's
    // clean and void of the race.
    void procesamiento() {
        VentaTablaFija v(env->ctx);
        const QStringList c{vender(v, "1", "3", "4"), vender(v, "1", "3", "2"), vender(v, "1", "4", "1"),
                            vender(v, "1", "5", "2"), vender(v, "1", "3", "1"), vender(v, "1", "5", "1")};
        db().exec("update tablafija set estatus=2, cobrado=99 where nu_boleto=?", {c[4]});
        db().exec("update tablafija set estatus=3, cobrado=5 where nu_boleto=?", {c[5]});
        db().exec("update carreras set retirado_tf=1 where carrera=1 and id_hipodromo=1 and nu_caballo=5");
        db().exec("update configuracion set valortablafija=12");
        auto estados = [&] {
            QStringList out;
            for (const QString& codigo : c) {
                const Row r = db().query("SELECT estatus, cobrado FROM tablafija WHERE nu_boleto=?", {codigo}).first();
                out << QString("%1:%2").arg(r.integer("estatus")).arg(r.number("cobrado"));
            }
            return out;
        };
        const QString hoy = fechaTrabajo(env->ctx);
        const ProcesoTablaFija p = procesarTablaFija(db(), hoy, 1, 1, 3);
        QCOMPARE(p.ganadores, 2LL);
        QCOMPARE(p.devoluciones, 1LL);
        QCOMPARE(estados(), (QStringList{"1:48", "1:24", "0:0", "4:10", "2:99", "3:5"}));
        QCOMPARE(numberOf(db(), "SELECT count(*) FROM carreras WHERE carrera=1 AND id_hipodromo=1 AND "
                                "(estado_tf<>1 OR venta_tf<>0)"),
                 0.0);
        // Re-processing through the desk, with another winner: asked first.
        entrar(*env, "admintf");
        EscritorioTablaFija e(env->ctx);
        Seleccion s = seleccionInicial(env->ctx);
        env->dialogs.yes();
        QVERIFY(e.procesar(s, "4"));
        QCOMPARE(env->dialogs.shown().first().text, QString("Esta carrera ya fue procesada, ¿Desea hacerlo de nuevo?"));
        QCOMPARE(env->dialogs.last().text, QString("CARRERA PROCESADA CON EXITO"));
        QCOMPARE(estados(), (QStringList{"0:0", "0:0", "1:12", "4:10", "2:99", "3:5"}));
        env->dialogs.clear();
        // Bad winners change nothing.
        for (const char* malo : {"", "0", "15", "x"}) QVERIFY(!e.procesar(s, malo));
        QVERIFY(!e.procesar(s, "9"));
        QVERIFY(!e.procesar(s, "5"));
        QCOMPARE(env->dialogs.texts().mid(4), (QStringList{"EL NUMERO DEL CABALLO NO EXISTE PARA ESTA CARRERA",
                                                           "EL CABALLO ESTA RETIRADO"}));
        QCOMPARE(estados(), (QStringList{"0:0", "0:0", "1:12", "4:10", "2:99", "3:5"}));
        env->dialogs.clear();
        // Clean: winners back to sold, refunds and paid tickets stay.
        QVERIFY(e.limpiar(s));
        QCOMPARE(estados(), (QStringList{"0:0", "0:0", "0:0", "4:10", "2:99", "3:5"}));
        // Void of the race: every unpaid ticket a refund of its money.
        env->dialogs.yes();
        QVERIFY(e.anularCarrera(s));
        QCOMPARE(estados(), (QStringList{"4:20", "4:10", "4:5", "4:10", "2:99", "3:5"}));
        env->dialogs.clear();
    }

    // The desk's single-ticket commands on fixed-table tickets, each logged in bitacora_tf.
    void escritorioBoletos() {
        VentaTablaFija v(env->ctx);
        const QString a = vender(v, "1", "3", "4"), b = vender(v, "1", "4", "2"), c = vender(v, "1", "6", "1");
        entrar(*env, "admintf");
        BoletosEscritorio e(env->ctx, juegoTablaFija());
        procesarTablaFija(db(), fechaTrabajo(env->ctx), 1, 1, 3);
        env->dialogs.type("COBRADO");
        QVERIFY(e.pagar(numeroDe(a)));
        QCOMPARE(textOf(db(), "SELECT concat(estatus, ' ', fecha_cobro = fecha) FROM tablafija WHERE nu_boleto=?", {a}),
                 QString("2 1"));
        env->dialogs.type("DEVUELTO");
        QVERIFY(e.devolver(numeroDe(b)));
        QCOMPARE(textOf(db(), "SELECT concat(estatus, ' ', cobrado) FROM tablafija WHERE nu_boleto=?", {b}),
                 QString("4 10"));
        // The race is processed: its ticket goes only with the administrator's code.
        env->dialogs.type("ANULADO");
        QVERIFY(!e.anularPorNumero(numeroDe(c)));
        QCOMPARE(env->dialogs.last().text, QString("LA CARRERA ESTA CERRADA, NO SE PUEDEN HACER CAMBIOS"));
        env->dialogs.type("QWPLR850264");
        QVERIFY(e.anularPorNumero(numeroDe(c)));
        QCOMPARE(textOf(db(), "SELECT group_concat(concat(nu_boleto, ':', estatus, ':', motivo) ORDER BY id) FROM "
                              "bitacora_tf"),
                 QString("%1:2:COBRADO,%2:4:DEVUELTO,%3:5:ELIMINADO POR EL ADMIN").arg(a, b, c));
        // Renumbered on its own table: a code another fixed-table ticket has is refused.
        const long long na = numeroDe(a);
        env->dialogs.type(b);
        QVERIFY(!e.renumerar(na));
        QCOMPARE(env->dialogs.last().text, QString("EL CODIGO YA PERTENECE A OTRO BOLETO"));
        env->dialogs.type("2112399999");
        QVERIFY(e.renumerar(na));
        QCOMPARE(textOf(db(), "SELECT nu_boleto FROM tablafija WHERE numero=?", {na}), QString("2112399999"));
        env->dialogs.clear();
    }

    // The administrator's window lists the race's tickets found with their
    // status and sums; the ticket chosen is the one its commands act on.
    void ventanaBusqueda() {
        VentaTablaFija v(env->ctx);
        const QString a = vender(v, "1", "3", "4"), b = vender(v, "1", "4", "2");
        entrar(*env, "admintf");
        procesarTablaFija(db(), fechaTrabajo(env->ctx), 1, 1, 3);
        Form_Admin_TF w(env->ctx);
        w.findChild<QComboBox*>("carrera")->setCurrentText("1");
        w.buscar();
        auto* grilla = w.findChild<QTableView*>("boletos");
        const auto celda = [&](int fila, int columna) {
            return grilla->model()->data(grilla->model()->index(fila, columna)).toString();
        };
        QCOMPARE(grilla->model()->rowCount(), 2);
        QCOMPARE((QStringList{celda(0, 0), celda(0, 4), celda(0, 7), celda(1, 0), celda(1, 4), celda(1, 7)}),
                 (QStringList{b, "2", "NO GANADOR", a, "4", "POR PAGAR"}));
        const bool d = env->ctx.session.enDolares();
        QCOMPARE(w.findChild<QLabel*>("boletosTotal")->text(),
                 QString("Boletos: 2    Tablas: 6    Monto: %1    Cobrado: %2    Por cobrar: %3")
                     .arg(formatoMonto(numberOf(db(), "SELECT sum(monto) FROM tablafija"), d), formatoMonto(0, d),
                          formatoMonto(numberOf(db(), "SELECT cobrado FROM tablafija WHERE nu_boleto=?", {a}), d)));
        grilla->setCurrentIndex(grilla->model()->index(1, 0));
        QCOMPARE(w.findChild<QLineEdit*>("numero")->text(), QString::number(numeroDe(a)));
        // The tickets tab for a look, on the smaller screen.
        w.findChild<QTabWidget*>("pestanas")->setCurrentIndex(1);
        w.resize(1024, 700);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        grab(&w, "Form_Admin_TF_boletos");
    }

    // The manager's sums on its own status sets: paid 2 and 4, to pay 1, 3 and 6.
    void gerencia_data() {
        QTest::addColumn<QString>("clase");
        QTest::addColumn<int>("filas");
        QTest::addColumn<QList<double>>("sumas");  // monto, cobrado, por cobrar
        QTest::newRow("TODAS") << "TODAS" << 6 << QList<double>{105, 110, 65};
        QTest::newRow("COBRADOS") << "COBRADOS" << 2 << QList<double>{40, 110, 0};
        QTest::newRow("POR PAGAR") << "POR PAGAR" << 3 << QList<double>{60, 0, 65};
        QTest::newRow("RET. POR PAGAR") << "RET. POR PAGAR" << 1 << QList<double>{20, 40, 0};
        QTest::newRow("RET. PAGADO") << "RET. PAGADO" << 1 << QList<double>{15, 0, 15};
    }
    void gerencia() {
        QFETCH(QString, clase);
        QFETCH(int, filas);
        QFETCH(QList<double>, sumas);
        VentaTablaFija v(env->ctx);
        const QStringList c{vender(v, "1", "1", "4"), vender(v, "1", "2", "4"), vender(v, "1", "3", "4"),
                            vender(v, "1", "4", "3"), vender(v, "1", "5", "5"), vender(v, "1", "6", "1")};
        const QList<QPair<int, double>> estados{{2, 70}, {4, 40}, {1, 30}, {3, 15}, {6, 20}, {0, 0}};
        for (int i = 0; i < c.size(); ++i)
            db().exec("update tablafija set estatus=?, cobrado=? where nu_boleto=?",
                      {estados[i].first, estados[i].second, c[i]});
        GerenciaTablaFija g(env->ctx);
        GerenciaTablaFija::Filtro f;
        f.fecha = fechaTrabajo(env->ctx);
        f.clase = clase;
        const auto b = g.buscar(f);
        QVERIFY(b);
        QCOMPARE(int(b->filas.size()), filas);
        QCOMPARE((QList<double>{b->sumamonto, b->sumacobrado, b->sumaporcobrar}), sumas);
        const auto t = g.totales(f.fecha);
        QCOMPARE(t->venta, 105.0);
        QCOMPARE(t->cobrado, 175.0);
        // The printed list: rpt_jugadas with the window's own paid and due columns. The
        // manager's machine has its local schema; the booth's tests run without one.
        env->resetLocal();
        const bool hecho = g.reporte(f).has_value();
        const double n = numberOf(env->local(), "SELECT count(*) FROM rpt_jugadas");
        const double pagado = numberOf(env->local(), "SELECT coalesce(sum(cobradoreal), 0) FROM rpt_jugadas");
        const double debido = numberOf(env->local(), "SELECT coalesce(sum(porcobrar), 0) FROM rpt_jugadas");
        sinLocal();
        QVERIFY(hecho);
        QCOMPARE(n, double(filas));
        QCOMPARE(pagado, sumas[1]);
        QCOMPARE(debido, sumas[2]);
        env->dialogs.clear();
    }

    // The display screen follows prices and the open state by itself; both
    // layouts grabbed for a look.
    void pantalla() {
        Form_Pant_TF una(env->ctx, 1);
        const QString caballo3 = textOf(db(), "SELECT caballo FROM carreras WHERE carrera=1 AND id_hipodromo=1 AND "
                                              "nu_caballo=3");
        QVERIFY(una.contenido().contains("CARRERA 1 ABIERTA"));
        QVERIFY(una.contenido().contains("\n3 " + caballo3 + " 5"));
        QVERIFY(!una.contenido().contains("CARRERA 2"));
        db().exec("update carreras set valor_tf=7.5 where carrera=1 and nu_caballo=3");
        db().exec("update carreras set retirado_tf=1 where carrera=1 and nu_caballo=4");
        una.refrescar();
        QVERIFY(una.contenido().contains("\n3 " + caballo3 + " 7.5"));
        QVERIFY(una.contenido().contains("\n4 "));
        QVERIFY(una.contenido().contains(" -1"));
        db().exec("update carreras set venta_tf=0 where carrera=1");
        una.refrescar();
        QVERIFY(una.contenido().contains("CARRERA 1 CERRADA"));
        Form_Pant_TF tres(env->ctx, 3);
        QVERIFY(tres.contenido().contains("CARRERA 2"));
        QVERIFY(tres.contenido().contains("CARRERA 3"));
        const QString carpetaPantallas = qEnvironmentVariable("HIPICO_SCREENS", carpeta.path());
        QDir().mkpath(carpetaPantallas);
        for (Form_Pant_TF* p : {&una, &tres}) {
            p->resize(1366, 768);
            QVERIFY(p->grab().save(carpetaPantallas + "/" + p->objectName() + "_1366x768.png"));
        }
    }

    // The demo's fixed-table day: sales on the open race, a processed race
    // whose due winner the booth pays.
    void demo() {
        cargarDemoTablaFija(db(), desdeFechaSql(fechaTrabajo(env->ctx)));
        QCOMPARE(contar(db(), "tablafija"), 8LL);
        QCOMPARE(textOf(db(), "SELECT group_concat(estatus ORDER BY numero) FROM tablafija WHERE carrera=2"),
                 QString("2,1,0,0"));
        VentaTablaFija v(env->ctx);
        v.cargar();
        QVERIFY(!vender(v, "1", "2", "1").isEmpty());
        const QString debido = textOf(db(), "SELECT nu_boleto FROM tablafija WHERE estatus=1");
        const ConsultaCobro c = v.buscarBoletoCobro(debido);
        QVERIFY(c.pagable);
        QCOMPARE(c.monto, 25.0);
        QVERIFY(v.cobrarBoleto());
        env->dialogs.clear();
    }

    // Booths selling the same horse together never pass its quota, and
    // every code is different.
    void cupoConcurrente() {
        constexpr int kTaquillas = 6;
        db().exec("update venta_cupo_tf set cab2=37");
        std::vector<std::unique_ptr<TaquillaTF>> t;
        for (int i = 0; i < kTaquillas; ++i) {
            t.push_back(std::make_unique<TaquillaTF>(*env, env->ctx.session));
            for (int k = 0; k < 40; ++k) t.back()->t.dialogs.yes();
        }
        std::atomic<int> vendidas{0};
        std::vector<std::thread> hilos;
        for (int i = 0; i < kTaquillas; ++i)
            hilos.emplace_back([&, i] {
                for (int k = 0; k < 8; ++k)
                    if (t[i]->venta.procesarVenta("1", "2", "2").resultado == VentaTablaFija::Resultado::Vendido)
                        ++vendidas;
            });
        for (auto& h : hilos) h.join();
        QCOMPARE(vendidas.load(), 18);
        QCOMPARE(numberOf(db(), "SELECT sum(tablas) FROM tablafija"), 36.0);
        QCOMPARE(numberOf(db(), "SELECT count(distinct nu_boleto) FROM tablafija"), 18.0);
        QVERIFY(textOf(db(), "SELECT min(left(nu_boleto, 1)) FROM tablafija") == "2");
    }

    // The booth's running totals and its printed summary.
    void totales() {
        VentaTablaFija v(env->ctx);
        v.cargar();
        vender(v, "1", "3", "4");
        vender(v, "1", "4", "2");
        const QString c = vender(v, "1", "5", "1");
        db().exec("update tablafija set estatus=1, cobrado=40 where caballo=3");
        db().exec("update tablafija set estatus=3, cobrado=10 where caballo=4");
        env->dialogs.clear();
        env->dialogs.yes().type("ANULADO");
        QVERIFY(v.anularUltimo());
        const TotalesDia t = v.Totalizar_Dia();
        QCOMPARE(t.venta, 30.0);
        QCOMPARE(t.cantVenta, 2LL);
        QCOMPARE(t.cobrado, 10.0);
        QCOMPARE(t.porCobrar, 40.0);
        QCOMPARE(t.anulados, 1LL);
        QFile::remove(puerto);
        QVERIFY(v.imprimirResumen(0, 0));
        const QString impreso = leerPuerto(puerto);
        QVERIFY(impreso.startsWith("--- VENTA TABLA FIJA ---\r\nRESUMEN DE VENTAS\r\n"));
        QVERIFY(impreso.contains("SALDO : -Bs. 20,00\r\n"));
        QVERIFY(impreso.contains("BOLETOS ANULADOS : 1\r\n"));
        Q_UNUSED(c);
        env->dialogs.clear();
    }
};

QTEST_MAIN(TstTablaFija)
#include "tst_tablafija.moc"
