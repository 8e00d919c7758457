// The report windows' fillers against a seeded week with hand-computed
// figures: sold, paid, due and total per race, group, centre and booth;
// voided tickets out; the three shares; the general report per centre and
// game with lay-offs, auction income and its text file; the audit logs and
// their voided-only listings; the scopes each level may choose; and the bad
// input each window refuses without touching its table. Every report that
// opens also lays out without a fault.
#include "support/Boletos.h"
#include "reportes/Exportar.h"
#include "reportes/Llenados.h"
#include "reportes/Reporte.h"
#include "reportes/VentanasReporte.h"
#include "sales/JuegoGanadores.h"
#include "support/TestEnv.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

Q_DECLARE_METATYPE(hipico::Peticion)
Q_DECLARE_METATYPE(hipico::Alcance)

using namespace hipico;
using namespace hipico::test;

namespace {

const QDate kHoy(2026, 11, 23);
const QDate kViernes(2026, 11, 20);

}  // namespace

class TstLlenados : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QTemporaryDir carpeta;

    Db& db() { return env->db(); }

    // The rows of the local table, the named columns joined by "|".
    QStringList filas(const char* tabla, const QString& columnas) {
        QStringList out;
        for (const Row& r : env->local().query(QString("SELECT %1 FROM %2 ORDER BY 1").arg(columnas, tabla).toStdString())) {
            QStringList v;
            for (const QVariant& x : r.values()) v << Row::toText(x);
            out << v.join('|');
        }
        return out;
    }

    // A window's report for a request: the kind it opens (0 when none), its
    // report laid out without a fault.
    int generar(const QString& ventana, const Peticion& p, std::optional<ParametrosReporte>* parametros = nullptr) {
        const DescripcionReporte* d = ventanaReporte(ventana);
        if (!d) qFatal("no window %s", qPrintable(ventana));
        GeneradorReporte g(env->ctx, *d);
        const auto a = g.generar(p);
        if (!a) return 0;
        if (parametros) *parametros = a->parametros;
        const auto s = solicitudGeneral(a->tipo, a->parametros.value_or(ParametrosReporte{}));
        try {
            const Documento doc = prepararReporte(env->ctx, *s);
            if (doc.filas().size() != a->filas) return -1;
        } catch (const ErrorPlantilla& e) {
            qWarning("%s", qPrintable(e.texto()));
            return -1;
        }
        return a->tipo;
    }

    static Peticion dia(const QDate& d, const Alcance& a = Alcance::todos()) { return {d, d, {}, {}, a, false}; }
    static Peticion semana(const Alcance& a = Alcance::todos()) { return {QDate(2026, 11, 17), kHoy, {}, {}, a, false}; }
    static Peticion carreras(const QDate& d, const QString& desde, const QString& hasta, const Alcance& a = Alcance::todos()) {
        return {d, d, desde, hasta, a, false};
    }

    void totales(const char* tabla, const QString& grupo, const QString& fecha, double venta, double premios,
                 double porPagar, double remate = 0, const QString& juego = {}) {
        db().exec(std::string("INSERT INTO ") + tabla + " (grupo, fecha, venta, premios, saldo, monto_porpagar" +
                      (QString(tabla) == "ventas_ganadores_general" ? ", remate" : QString(tabla) == "ventas_generales" ? ", juego" : "") +
                      ") VALUES (?, ?, ?, ?, ?, ?" + (QString(tabla) == "ventas_tf_general" ? "" : ", ?") + ")",
                  QString(tabla) == "ventas_ganadores_general"
                      ? Params{grupo, fecha, venta, premios, venta - premios - porPagar, porPagar, remate}
                  : QString(tabla) == "ventas_generales"
                      ? Params{grupo, fecha, venta, premios, venta - premios - porPagar, porPagar, juego}
                      : Params{grupo, fecha, venta, premios, venta - premios - porPagar, porPagar});
    }

    void anotar(const QString& grupo, const QString& ch, const QString& fecha, int estatus) {
        insertar(db(), AnotacionBitacora{1, 1, 1, 1, ch, grupo, "10:00:00", fecha, "X", 0, "MOTIVO", "admin", estatus}.insercion());
    }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("llenados", true);
        env->loadDemo();
        QCOMPARE(env->clock.today(), kHoy);
        // Group 12 sells its units at 20 and splits its balance 50/30/20.
        db().exec("UPDATE grupos SET valor_ganador = 20, por_ch = 50, por_casa = 30, por_admin = 20 WHERE grupo = '12'");
        // The working day's tickets.
        venderBoleto(db(), kHoy, 1, 1, 2, "07", "LOS PINOS");
        venderBoleto(db(), kHoy, 1, 3, 1, "07", "LOS PINOS", 1, 25);
        venderBoleto(db(), kHoy, 1, 3, 3, "07", "LOS PINOS", 2, 40);
        venderBoleto(db(), kHoy, 1, 2, 2, "12", "MARACAY", 4, 20);
        venderBoleto(db(), kHoy, 2, 4, 5, "08", "LOS PINOS", 3, 50);
        venderBoleto(db(), kHoy, 3, 1, 1, "07", "LOS PINOS");
        anotar("07", "LOS PINOS", fechaSql(kHoy), 5);  // a voided ticket: only in the log
        // Friday's tickets, kept in the group copy.
        for (const BoletoDePrueba& b : {venderBoleto(db(), kViernes, 1, 2, 4, "07", "LOS PINOS", 2, 30),
                                        venderBoleto(db(), kViernes, 1, 5, 1, "15", "MARACAY")})
            copiarAlGrupo(db(), juegoGanadores(), b.codigo);
        // Fixed-table tickets of the day.
        for (const auto& [monto, estatus, cobrado] : {std::tuple{30.0, 0, 0.0}, std::tuple{20.0, 1, 60.0}})
            db().exec("INSERT INTO tablafija (carrera, caballo, tablas, monto, ch, grupo, hora, fecha, cobrado, estatus, "
                      "nu_boleto) VALUES (1, 2, 1, ?, 'LOS PINOS', '08', '10:00:00', ?, ?, ?, 'T')",
                      {monto, fechaSql(kHoy), cobrado, estatus});
        // Daily totals of the week (instead of the demo's).
        for (const char* t : {"ventas_ganadores_general", "ventas_tf_general"})
            db().exec(std::string("DELETE FROM ") + t + " WHERE fecha < ?", {fechaSql(kHoy)});
        totales("ventas_ganadores_general", "07", "2026-11-17", 1000, 300, 100, 50);
        totales("ventas_ganadores_general", "07", "2026-11-18", 500, 600, 0);
        totales("ventas_ganadores_general", "12", "2026-11-17", 2000, 500, 500);
        totales("ventas_tf_general", "08", "2026-11-17", 300, 100, 0);
        totales("ventas_generales", "08", "2026-11-18", 80, 30, 0, 0, "PUESTOS");
        insertar(db(), Descarga{"2026-11-17", "10:00:00", "LOS PINOS", "07", 1, 3, 10, 150}.insercion());
        // The audit log of the week.
        anotar("07", "LOS PINOS", "2026-11-17", 5);
        anotar("07", "LOS PINOS", "2026-11-17", 5);
        anotar("07", "LOS PINOS", "2026-11-17", 2);
        anotar("12", "MARACAY", "2026-11-18", 5);
        // A subgroup whose name carries a quote, with one group and one ticket.
        db().exec("INSERT INTO subgrupos (subgrupo, nombre) VALUES ('S3', 'O''HIGGINS')");
        db().exec("INSERT INTO grupos (grupo, ch, subgrupo) VALUES ('20', 'LA O''HIGGINS', 'S3')");
        venderBoleto(db(), kHoy, 2, 1, 1, "20", "LA O'HIGGINS");
    }

    void init() { env->signIn("admin"); }
    void cleanup() { cerrarDialogos(env->dialogs); }

    void resultadosPorCarrera_data() {
        QTest::addColumn<QString>("ventana");
        QTest::addColumn<Peticion>("peticion");
        QTest::addColumn<int>("tipo");
        QTest::addColumn<QStringList>("esperado");  // carrera|jugado|cobrado|monto_porpagar|total|ch
        QTest::newRow("every group") << "Form_ResultadosCarreras_WIN" << carreras(kHoy, "1", "2") << 34
                                     << QStringList{"1|100|40|45|15|TODOS", "2|60|50|0|10|TODOS"};
        QTest::newRow("one group") << "Form_ResultadosCarreras_WIN" << carreras(kHoy, "1", "3", Alcance::grupo("07")) << 34
                                   << QStringList{"1|60|40|25|-5|07", "3|10|0|0|10|07"};
        QTest::newRow("kept day") << "Form_ResultadosCarreras_WIN" << carreras(kViernes, "1", "1") << 34
                                  << QStringList{"1|50|30|0|20|TODOS"};
        QTest::newRow("subgroup, per centre")
            << "Form_ResultadosCarreras_WIN" << carreras(kHoy, "1", "2", Alcance::subgrupo("OCCIDENTE")) << 7
            << QStringList{"1|40|0|20|20|MARACAY"};
        QTest::newRow("subgroup with a quote")
            << "Form_ResultadosCarreras_WIN" << carreras(kHoy, "1", "2", Alcance::subgrupo("O'HIGGINS")) << 7
            << QStringList{"2|10|0|0|10|LA O'HIGGINS"};
        QTest::newRow("fixed table") << "Form_ResultadosCarreras_TF" << dia(kHoy) << 21
                                     << QStringList{"1|50|0|60|-10|TODOS"};
    }

    // Played = units x the group's price (fixed table: amount); paid = status
    // 2 and 3; due = 1 and 4; total = played - paid - due.
    void resultadosPorCarrera() {
        QFETCH(QString, ventana);
        QFETCH(Peticion, peticion);
        QFETCH(int, tipo);
        QFETCH(QStringList, esperado);
        QCOMPARE(generar(ventana, peticion), tipo);
        QCOMPARE(filas("rpt_resultadoscarreras", "carrera, jugado, cobrado, monto_porpagar, total, ch"), esperado);
        QCOMPARE(filas("rpt_resultadoscarreras", "DISTINCT fecha"), QStringList{fechaVista(peticion.desde)});
    }

    void dividendos() {
        db().exec("UPDATE carreras SET win_ganadores = 3, dividendo = 5.2 WHERE fecha = ? AND carrera = 1 AND id_hipodromo = 1",
                  {fechaSql(kHoy)});
        db().exec("UPDATE carreras SET win_ganadores = 1, dividendo = 3, win_ganadores2 = 4, dividendo2 = 2.5 "
                  "WHERE fecha = ? AND carrera = 2 AND id_hipodromo = 2",
                  {fechaSql(kHoy)});
        const auto nombre = [&](int carrera, int hipodromo, int n) {
            return textOf(db(), "SELECT caballo FROM carreras WHERE fecha = ? AND carrera = ? AND id_hipodromo = ? AND nu_caballo = ?",
                          {fechaSql(kHoy), carrera, hipodromo, n});
        };
        QCOMPARE(generar("Form_Rpt_Dividendos", dia(kHoy)), 5);
        QCOMPARE(filas("rpt_dividendos", "ch, carrera, num_cab, caballo, dividendo, num_cab2, dividendo2, fecha"),
                 (QStringList{"LA RINCONADA|1|3|" + nombre(1, 1, 3) + "|5.2|0|0|23-11-2026",
                              "SANTA RITA|2|1|" + nombre(2, 2, 1) + " / " + nombre(2, 2, 4) + "|3|4|2.5|23-11-2026"}));
    }

    void resumenes_data() {
        QTest::addColumn<QString>("ventana");
        QTest::addColumn<Peticion>("peticion");
        QTest::addColumn<int>("tipo");
        // chipico|ch|fecha|venta|premios|monto_porpagar|saldo|por_ch|por_casa|por_admin
        QTest::addColumn<QStringList>("esperado");
        QTest::newRow("winners, week") << "Form_RVC_WIN" << semana() << 17
                                       << QStringList{"LOS PINOS|07|2026-11-17|1000|300|100|600|240|240|120",
                                                      "LOS PINOS|07|2026-11-18|500|600|0|-100|-40|-40|-20",
                                                      "MARACAY|12|2026-11-17|2000|500|500|1000|500|300|200"};
        QTest::newRow("winners, one day from the tickets")
            << "Form_RVC_WIN" << dia(kHoy) << 1
            << QStringList{"LA O'HIGGINS|20|2026-11-23|10|0|0|10|0|0|0", "LOS PINOS|07|2026-11-23|70|40|25|5|2|2|1",
                           "LOS PINOS|08|2026-11-23|50|50|0|0|0|0|0", "MARACAY|12|2026-11-23|40|0|20|20|10|6|4"};
        QTest::newRow("winners, one subgroup") << "Form_RVC_WIN" << semana(Alcance::subgrupo("OCCIDENTE")) << 17
                                               << QStringList{"MARACAY|12|2026-11-17|2000|500|500|1000|500|300|200"};
        QTest::newRow("fixed table, week") << "Form_RVC_TF" << semana() << 19
                                           << QStringList{"LOS PINOS|08|2026-11-17|300|100|0|200|80|80|40"};
        QTest::newRow("fixed table, one day") << "Form_RVC_TF" << dia(kHoy) << 2
                                              << QStringList{"LOS PINOS|08|2026-11-23|50|0|60|-10|-4|-4|-2"};
        QTest::newRow("fixed-table profit") << "Form_GanTF" << semana(Alcance::grupo("08")) << 27
                                            << QStringList{"LOS PINOS|08|2026-11-17|300|100|0|200|80|80|40"};
        QTest::newRow("fixed table by subgroup") << "Form_RVTF_SubGrupos" << dia(kHoy, Alcance::subgrupo("ORIENTE")) << 28
                                                 << QStringList{"LOS PINOS|08|2026-11-23|50|0|60|-10|-4|-4|-2"};
        QTest::newRow("places") << "Form_RVC_PT" << semana() << 33
                                << QStringList{"LOS PINOS|08|2026-11-18|80|30|0|50|20|20|10"};
    }

    // Sold, prizes, due, balance (sold - prizes - due) and each share =
    // balance x its percentage / 100.
    void resumenes() {
        QFETCH(QString, ventana);
        QFETCH(Peticion, peticion);
        QFETCH(int, tipo);
        QFETCH(QStringList, esperado);
        QCOMPARE(generar(ventana, peticion), tipo);
        QCOMPARE(filas("rpt_diario", "chipico, ch, fecha, venta, premios, monto_porpagar, saldo, por_ch, por_casa, por_admin"),
                 esperado);
        QCOMPARE(filas("rpt_diario", "DISTINCT fecha_inicio, fecha_final"),
                 QStringList{fechaVista(peticion.desde) + "|" + fechaVista(peticion.hasta)});
    }

    void reporteGeneral() {
        const QString columnas = "ch, fecha, ganadores, tablafija, remate, macuare, puestos, dinamicas, descargas";
        QCOMPARE(generar("Form_ReporteGeneral", semana()), 29);
        QCOMPARE(filas("rpt_general", columnas), (QStringList{"LOS PINOS|2026-11-17|600|200|50|0|0|0|50",
                                                             "LOS PINOS|2026-11-18|-100|0|0|0|50|0|0",
                                                             "MARACAY|2026-11-17|1000|0|0|0|0|0|0"}));
        QCOMPARE(generar("Form_ReporteGeneral", semana(Alcance::grupo("12"))), 29);
        QCOMPARE(filas("rpt_general", columnas), QStringList{"MARACAY|2026-11-17|1000|0|0|0|0|0|0"});

        // Per race of one day, from the tickets: sold less every prize, paid or due.
        QCOMPARE(generar("Form_ReporteGeneralC", carreras(kHoy, "1", "2")), 29);
        QCOMPARE(filas("rpt_general", columnas), (QStringList{"LA O'HIGGINS|2026-11-23|10|0|0|0|0|0|0",
                                                             "LOS PINOS|2026-11-23|-5|-10|0|0|0|0|0",
                                                             "MARACAY|2026-11-23|20|0|0|0|0|0|0"}));

        // Once the auction boards give the house's income, it is theirs.
        ponerIngresoRemate([](Context&, const QString& ch, const QString&, long long desde, long long) {
            return ch == "MARACAY" ? 7.5 + desde : 0.0;
        });
        QCOMPARE(generar("Form_ReporteGeneralC", carreras(kHoy, "1", "2", Alcance::grupo("12"))), 29);
        ponerIngresoRemate({});
        QCOMPARE(filas("rpt_general", "ch, remate"), QStringList{"MARACAY|8.5"});
    }

    // The text file: one line per centre and day, with the voided tickets.
    void archivoDeTexto() {
        GeneradorReporte g(env->ctx, *ventanaReporte("Form_ReporteGeneral"));
        const QString archivo = carpeta.filePath("general.txt");
        QVERIFY(g.exportarTexto(semana(), archivo));
        QFile f(archivo);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(f.readAll()).split('\n', Qt::SkipEmptyParts),
                 (QStringList{"FECHA;CENTRO;GANADORES;TABLA FIJA;REMATE;PUESTOS;DINAMICAS;ANULADOS",
                              "17-11-2026;LOS PINOS;600.00;200.00;50.00;0.00;0.00;2",
                              "18-11-2026;LOS PINOS;-100.00;0.00;0.00;50.00;0.00;0",
                              "17-11-2026;MARACAY;1000.00;0.00;0.00;0.00;0.00;0"}));
        QCOMPARE(kFiltroTexto, QString("Archivos de texto Txt|*.txt"));
    }

    void bitacora_data() {
        QTest::addColumn<Alcance>("alcance");
        QTest::addColumn<bool>("soloAnulados");
        QTest::addColumn<QStringList>("esperado");  // grupo|fecha|estatus|tipo_motivo, newest first
        QTest::newRow("every centre: every entry")
            << Alcance::todos() << false
            << QStringList{"07|2026-11-23|5|ANULADO", "07|2026-11-17|5|ANULADO", "07|2026-11-17|5|ANULADO",
                           "07|2026-11-17|2|PAGADO", "12|2026-11-18|5|ANULADO"};
        QTest::newRow("one group") << Alcance::grupo("07") << false
                                   << QStringList{"07|2026-11-23|5|ANULADO", "07|2026-11-17|5|ANULADO",
                                                  "07|2026-11-17|5|ANULADO", "07|2026-11-17|2|PAGADO"};
        QTest::newRow("one group, voided only") << Alcance::grupo("07") << true
                                                << QStringList{"07|2026-11-23|5|ANULADO", "07|2026-11-17|5|ANULADO",
                                                               "07|2026-11-17|5|ANULADO"};
        QTest::newRow("one subgroup: voided only") << Alcance::subgrupo("ORIENTE") << false
                                                   << QStringList{"07|2026-11-23|5|ANULADO", "07|2026-11-17|5|ANULADO",
                                                                  "07|2026-11-17|5|ANULADO"};
    }

    void bitacora() {
        QFETCH(Alcance, alcance);
        QFETCH(bool, soloAnulados);
        QFETCH(QStringList, esperado);
        Peticion p = semana(alcance);
        p.opcion = soloAnulados;
        QCOMPARE(generar("Form_Bitacora_Ganadores", p), 16);
        QStringList vistas;
        for (const Row& r : env->local().query("SELECT grupo, fecha, estatus, tipo_motivo FROM rpt_bitacora ORDER BY id"))
            vistas << QStringList{r.text("grupo"), r.text("fecha"), r.text("estatus"), r.text("tipo_motivo")}.join('|');
        // Same day: the newest entry (the larger id) first.
        QCOMPARE(vistas.size(), esperado.size());
        QCOMPARE(QSet<QString>(vistas.begin(), vistas.end()), QSet<QString>(esperado.begin(), esperado.end()));
        QCOMPARE(filas("rpt_bitacora", "DISTINCT fecha_inicio, fecha_final"), QStringList{"17-11-2026|23-11-2026"});
        QCOMPARE(generar("Form_Bitacora_TF", p), 0);
        QCOMPARE(env->dialogs.last().text, QString("No se encontro Ningun registro"));
        env->dialogs.clear();
    }

    // The weekly summary by booth: the working day from the day's tickets,
    // the other days from the kept copies; both parameters handed over.
    void semanalPorTaquilla() {
        std::optional<ParametrosReporte> p;
        QCOMPARE(generar("Form_RPt_TaqS", semana(), &p), 40);
        QVERIFY(p);
        QCOMPARE(p->parametro1, QString("DEL 17-11-2026 AL 23-11-2026"));
        QCOMPARE(p->parametro2, 47);
        QCOMPARE(filas("rpt_resultadostaqs", "taquilla, fecha, jugado, cobrado, monto_porpagar, total, ch"),
                 (QStringList{"LA O'HIGGINS|23-11-2026|10|0|0|10|LA O'HIGGINS", "LOS PINOS|20-11-2026|40|30|0|10|LOS PINOS",
                              "LOS PINOS|23-11-2026|120|90|25|5|LOS PINOS", "MARACAY|20-11-2026|10|0|0|10|MARACAY",
                              "MARACAY|23-11-2026|40|0|20|20|MARACAY"}));
        QCOMPARE(generar("Form_RPT_CuadreTaqTF", dia(kHoy)), 20);
        QCOMPARE(filas("rpt_resultadostaqs", "taquilla, jugado, cobrado, monto_porpagar, total"),
                 QStringList{"LOS PINOS|50|0|60|-10"});
    }

    // The ticket list of the winners desk: money at the unit price, paid and due apart.
    void listaDeBoletos() {
        const Recordset boletos = db().query(
            "SELECT numero,nu_boleto,carrera,caballo,ganadores,cobrado,estatus,ch,grupo FROM ma_principal "
            "WHERE fecha = ? AND grupo = '07' ORDER BY numero DESC",
            {fechaSql(kHoy)});
        QCOMPARE(reescribir(env->local(), "rpt_jugadas", filasJugadas(boletos, fechaSql(kHoy), 10)), 4LL);
        QCOMPARE(filas("rpt_jugadas", "SUM(ganadores), SUM(monto), SUM(cobradoreal), SUM(porcobrar), MIN(fecha)"),
                 QStringList{"7|70|40|25|23-11-2026"});
        const Documento d = prepararReporte(env->ctx, *solicitudBoletos(1, {"CARRERA 1", 1}));
        QCOMPARE(d.lineas().last().texto, QString("TOTALES"));
        QCOMPARE(d.total(d.lineas().last(), 4), QString("Bs. 70,00"));
    }

    void nivelesYAlcances() {
        env->signIn("gerente");  // group 07, LOS PINOS
        GeneradorReporte g(env->ctx, *ventanaReporte("Form_ResultadosCarreras_WIN"));
        QCOMPARE(g.alcances(), (QVector<Alcance>{Alcance::todos(), Alcance::grupo("07"), Alcance::grupo("08")}));
        // "TODOS" is the manager's centre.
        QCOMPARE(generar("Form_ResultadosCarreras_WIN", carreras(kHoy, "1", "2")), 34);
        QCOMPARE(filas("rpt_resultadoscarreras", "carrera, jugado"), (QStringList{"1|60", "2|50"}));
        env->signIn("taquilla3");  // group 12
        QCOMPARE(g.alcances(), QVector<Alcance>{Alcance::grupo("12")});
        env->signIn("socio");
        QVERIFY(g.alcances().contains(Alcance::subgrupo("O'HIGGINS")));
        QVERIFY(g.alcances().contains(Alcance::grupo("15")));
    }

    void entradaNoValida_data() {
        QTest::addColumn<QString>("usuario");
        QTest::addColumn<QString>("ventana");
        QTest::addColumn<Peticion>("peticion");
        QTest::addColumn<QString>("mensaje");
        const QString rango = "DEBE INGRESAR EL RANGO DE LAS CARRRERAS";
        QTest::newRow("one race bound") << "admin" << "Form_ResultadosCarreras_WIN" << carreras(kHoy, "1", "") << rango;
        QTest::newRow("the other bound") << "admin" << "Form_ResultadosCarreras_WIN" << carreras(kHoy, "", "4") << rango;
        QTest::newRow("races reversed") << "admin" << "Form_ResultadosCarreras_WIN" << carreras(kHoy, "3", "1") << rango;
        QTest::newRow("race not a number") << "admin" << "Form_ReporteGeneralC" << carreras(kHoy, "1", "2'") << rango;
        QTest::newRow("dates reversed") << "admin" << "Form_RVC_WIN"
                                        << Peticion{kHoy, kHoy.addDays(-1), {}, {}, Alcance::todos(), false}
                                        << "LA FECHA INICIAL NO PUEDE SER MAYOR QUE LA FECHA FINAL";
        QTest::newRow("no date") << "admin" << "Form_Bitacora_TF" << Peticion{QDate(), kHoy, {}, {}, Alcance::todos(), false}
                                 << "DEBE INGRESAR LAS FECHAS DEL REPORTE";
        QTest::newRow("unknown group") << "admin" << "Form_RVC_TF" << semana(Alcance::grupo("99")) << "DEBE SELECCIONAR UN GRUPO";
        QTest::newRow("unknown subgroup") << "admin" << "Form_ReporteGeneral" << semana(Alcance::subgrupo("O'HIGGINS' OR '1'='1"))
                                          << "DEBE SELECCIONAR UN SUBGRUPO";
        QTest::newRow("a booth asks for every group") << "taquilla1" << "Form_ResultadosCarreras_TF" << dia(kHoy)
                                                      << "DEBE SELECCIONAR UN GRUPO";
        QTest::newRow("a manager asks for another centre's group")
            << "gerente" << "Form_RVC_WIN" << semana(Alcance::grupo("12")) << "DEBE SELECCIONAR UN GRUPO";
    }

    // Bad input: the message, and every report table stays as it was.
    void entradaNoValida() {
        QFETCH(QString, usuario);
        QFETCH(QString, ventana);
        QFETCH(Peticion, peticion);
        QFETCH(QString, mensaje);
        QCOMPARE(generar("Form_ResultadosCarreras_WIN", carreras(kHoy, "1", "2")), 34);
        const QStringList antes = foto(env->local(), {"rpt_resultadoscarreras", "rpt_diario", "rpt_general", "rpt_bitacora"});
        env->signIn(usuario);
        QCOMPARE(generar(ventana, peticion), 0);
        QCOMPARE(env->dialogs.count(), 1);
        QCOMPARE(env->dialogs.last().title, QString("VERFICACION DE DATOS"));
        QCOMPARE(env->dialogs.last().icon, Icon::Critical);
        QCOMPARE(env->dialogs.last().text, mensaje);
        QCOMPARE(foto(env->local(), {"rpt_resultadoscarreras", "rpt_diario", "rpt_general", "rpt_bitacora"}), antes);
    }

    // Pictures of the first pages of the week's reports, to look at.
    void retratos() {
        const QString carpetaFotos = qEnvironmentVariable("HIPICO_SCREENS", QDir::current().absoluteFilePath("screens"));
        QDir().mkpath(carpetaFotos);
        for (const auto& [ventana, peticion] :
             {std::pair{"Form_ReporteGeneral", semana()}, std::pair{"Form_RVC_WIN", semana()},
              std::pair{"Form_Bitacora_Ganadores", semana()}, std::pair{"Form_ResultadosCarreras_WIN", carreras(kHoy, "1", "3")},
              std::pair{"Form_Rpt_Dividendos", dia(kHoy)}}) {
            std::optional<ParametrosReporte> p;
            const int tipo = generar(ventana, peticion, &p);
            QVERIFY2(tipo > 0, ventana);
            const Documento d = prepararReporte(env->ctx, *solicitudGeneral(tipo, p.value_or(ParametrosReporte{})));
            QVERIFY(imagenPagina(d, 0, 110).save(QDir(carpetaFotos).filePath(QString("reporte_%1.png").arg(tipo))));
        }
    }

    // Nothing in the range: the message, and the table is empty (a report
    // opened now shows no rows of an earlier one).
    void rangoVacio() {
        QCOMPARE(generar("Form_RVC_WIN", semana()), 17);
        QCOMPARE(generar("Form_RVC_WIN", Peticion{QDate(2026, 10, 1), QDate(2026, 10, 7), {}, {}, Alcance::todos(), false}), 0);
        QCOMPARE(env->dialogs.last().title, QString(" Busqueda "));
        QCOMPARE(env->dialogs.last().text, QString("No se encontro Ningun registro"));
        QCOMPARE(contar(env->local(), "rpt_diario"), 0LL);
    }
};

QTEST_MAIN(TstLlenados)
#include "tst_llenados.moc"
