// The report windows as a user opens them from the main menu: every
// report window's entry shows and its "Reporte" opens the report of its kind;
// the menu's current fixed table, the winners desk's ticket search and the
// booth summary print through the report windows; a general report's text file.
#include "admin/Form_Admin_Win.h"
#include "reportes/Form_Reporte.h"
#include "reportes/RPT_Diario_WIN.h"
#include "reportes/TiposReporte.h"
#include "support/Boletos.h"
#include "support/Ventanas.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

using namespace hipico;
using namespace hipico::test;

class TstVentanasReporte : public QObject {
    Q_OBJECT
    QTemporaryDir carpeta;
    std::unique_ptr<TestEnv> env;

    static RPT_Diario_WIN* ultimoReporte() { return ultimaVentana<RPT_Diario_WIN>(); }
    static void cerrarReportes() { cerrarVentanas<RPT_Diario_WIN>(); }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("ventanas_reporte", true);
        env->loadDemo();
        const QDate hoy = env->clock.today();
        venderBoleto(env->db(), hoy, 1, 3, 2, "07", "LOS PINOS", 2, 40);
        venderBoleto(env->db(), hoy, 1, 5, 1, "12", "MARACAY");
        env->db().exec("INSERT INTO tablafija (carrera, caballo, tablas, monto, ch, grupo, hora, fecha, cobrado, estatus, "
                       "nu_boleto) VALUES (1, 2, 1, 30, 'LOS PINOS', '08', '10:00:00', ?, 0, 0, 'T')",
                       {fechaSql(hoy)});
        env->db().exec("UPDATE carreras SET win_ganadores = 3, dividendo = 4.5 WHERE fecha = ? AND carrera = 1", {fechaSql(hoy)});
        for (const char* g : {"07", "12"})
            env->db().exec("INSERT INTO bitacora (numero, grupo, fecha, estatus, taquilla) VALUES (1, ?, ?, 5, 'X')",
                           {g, fechaSql(hoy)});
        env->db().exec("UPDATE ventas_ganadores_general SET venta = 100, premios = 40, saldo = 60 WHERE grupo = '07'");
    }

    void cleanup() {
        cerrarReportes();
        cerrarDialogos(env->dialogs);
    }

    void reporteDesdeElMenu_data() {
        QTest::addColumn<QString>("entrada");
        QTest::addColumn<int>("tipo");
        const QMap<QString, int> tipos{{"rc_admin_menu", 34},      {"rctf_admin_menu", 21}, {"dd_admin_menu", 5},
                                       {"cuadre_gantf_menu", 28},  {"rpt_gen_admin_menu", 29}, {"gpc_rptgeneral", 29},
                                       {"gd_menu", 1},           {"diario_menu_tf", 2},    {"mc_rpt_diario", 0},
                                       {"rvc_pt_menu", 0},        {"rvc_td_menu", 0},       {"resgrupos_menu", 28},
                                       {"bt_menu", 16},           {"bit_tf_menu", 0},       {"rst_menu", 40},
                                       {"tf_porTaquilla", 20}};
        for (const DescripcionReporte& d : ventanasReporte())
            QTest::newRow(qPrintable(d.nombre)) << d.entrada << tipos.value(d.entrada, -1);
    }

    // The entry shows for the administrator and opens its window; "Reporte"
    // with the window's first choices opens the report of its kind (or says
    // that nothing was found).
    void reporteDesdeElMenu() {
        QFETCH(QString, entrada);
        QFETCH(int, tipo);
        QVERIFY2(tipo >= 0, "a report window this test does not know");
        MenuDePrueba m(*env, "admin");
        QVERIFY(m.menu->accion(entrada) && m.menu->accion(entrada)->isVisible());
        auto* w = qobject_cast<Form_Reporte*>(m.abrir(entrada));
        QVERIFY(w);
        if (auto* desde = w->findChild<QDateEdit*>("DTPicker1"); w->findChild<QDateEdit*>("DTPicker2"))
            desde->setDate(env->clock.today());  // one day: the day's tickets or totals
        if (auto* c = w->findChild<QLineEdit*>("Text_Desde")) {
            QTest::keyClicks(c, "1");
            QTest::keyClicks(w->findChild<QLineEdit*>("Text_Hasta"), "8");
        }
        QTest::mouseClick(w->findChild<QPushButton*>("Boton_Reporte"), Qt::LeftButton);
        if (tipo == 0) {
            QCOMPARE(env->dialogs.count(), 1);
            QCOMPARE(env->dialogs.last().text, QString("No se encontro Ningun registro"));
            env->dialogs.clear();
            return;
        }
        QCOMPARE(env->dialogs.texts(), QStringList());
        RPT_Diario_WIN* r = ultimoReporte();
        QVERIFY(r);
        QCOMPARE(r->windowTitle(), tipoReporte(tipo)->titulo);
        QVERIFY(r->documento().filas().size() > 0);
    }

    // The menu's current fixed table refills its table and opens kind 24 inside the menu.
    void tablaFijaActual() {
        MenuDePrueba m(*env, "admin");
        m.menu->activar("imp_tfactual");
        QApplication::processEvents();
        auto* r = qobject_cast<RPT_Diario_WIN*>(m.menu->area()->activeSubWindow()->widget());
        QVERIFY(r);
        QCOMPARE(r->windowTitle(), QString("REPORTE POR CARRERA - TABLA FIJA"));
        QCOMPARE(r->documento().filas().size(),
                 int(numberOf(env->db(), "SELECT count(*) FROM carreras WHERE fecha = ? AND carrera = 1 AND "
                              "id_hipodromo = (SELECT id_hipodromo FROM configuracion)",
                              {fechaSql(env->clock.today())})));
        QVERIFY(r->documento().encabezado().first().startsWith("CARRERA 1     FECHA " + fechaVista(env->clock.today())));
    }

    // The desk's ticket search printed through the ticket report window.
    void busquedaDelEscritorio() {
        MenuDePrueba m(*env, "admin");
        QWidget* desk = m.abrir("cg_menu");
        QVERIFY(desk);
        QTest::mouseClick(desk->findChild<QPushButton*>("imprimirBusqueda"), Qt::LeftButton);
        RPT_Diario_WIN* r = ultimoReporte();
        QVERIFY2(r, qPrintable(env->dialogs.texts().join("|")));
        QCOMPARE(r->objectName(), QString("RPT_Jugadas_WIN"));
        QCOMPARE(r->documento().filas().size(), 2);
        QCOMPARE(r->documento().encabezado().last(), QString("BUSQUEDA: TODAS - CENTRO TODOS - GRUPO TODOS     CARRERA: 1"));
    }

    // The booth summary printed: kind 18 on the rows it shows.
    void resumenDeTaquillas() {
        MenuDePrueba m(*env, "admin");
        QWidget* w = m.abrir("CT_ADMIN_MENU");
        QTest::mouseClick(w->findChild<QPushButton*>("Boton_Imprimir"), Qt::LeftButton);
        RPT_Diario_WIN* r = ultimoReporte();
        QVERIFY(r);
        QCOMPARE(r->windowTitle(), QString("RESUMEN VENTA TAQUILLAS - GANADORES"));
        QCOMPARE(r->documento().filas().size(), 2);
    }

    // "Exportar Txt" of the general report per race.
    void archivoDeTexto() {
        MenuDePrueba m(*env, "admin");
        auto* w = qobject_cast<Form_Reporte*>(m.abrir("gpc_rptgeneral"));
        QTest::keyClicks(w->findChild<QLineEdit*>("Text_Desde"), "1");
        QTest::keyClicks(w->findChild<QLineEdit*>("Text_Hasta"), "2");
        const QString archivo = carpeta.filePath("dia.txt");
        QVERIFY(w->ExportarTxt_Click(archivo));
        QFile f(archivo);
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QStringList lineas = QString::fromUtf8(f.readAll()).split('\n', Qt::SkipEmptyParts);
        const QString dia = fechaVista(env->clock.today());
        QCOMPARE(lineas, (QStringList{"FECHA;CENTRO;GANADORES;TABLA FIJA;REMATE;PUESTOS;DINAMICAS;ANULADOS",
                                      dia + ";LOS PINOS;-20.00;30.00;0.00;0.00;0.00;1",
                                      dia + ";MARACAY;10.00;0.00;0.00;0.00;0.00;1"}));
    }
};

QTEST_MAIN(TstVentanasReporte)
#include "tst_ventanasreporte.moc"
