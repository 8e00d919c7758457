// The auction windows driven offscreen from the main menu: every board loads
// a race and takes bids typed from the keyboard (pictured at the screen sizes
// it is made for), the buyer and amount boxes' keys, the line number, the
// read-only partner, what another machine writes, the auction winner, the
// report by dates and the winners desk's auction cells.
#include "admin/Form_Admin_Win.h"
#include "core/Formato.h"
#include "gui/Estilo.h"
#include "reportes/RPT_Diario_WIN.h"
#include "reportes/TiposReporte.h"
#include "schema/Demo.h"
#include "subastas/Form_Subasta.h"
#include "support/Ventanas.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QtTest>

using namespace hipico;
using namespace hipico::test;

class TstFormSubasta : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QString fecha;

    template <class T = QWidget>
    static T* hijo(QWidget* w, const QString& nombre) {
        T* h = w->findChild<T*>(nombre);
        if (!h) qFatal("no existe %s", qPrintable(nombre));
        return h;
    }
    // Types into a box and leaves it with Enter, as the auctioneer does.
    static void teclear(QWidget* w, const QString& nombre, const QString& texto) {
        auto* caja = hijo<QLineEdit>(w, nombre);
        caja->setFocus();
        caja->selectAll();
        QTest::keyClicks(caja, texto);
        QTest::keyClick(caja, Qt::Key_Return);
    }
    static QString celda(const char* tipo, int tabla, int linea) {
        return QStringLiteral("%1%2_%3").arg(QLatin1String(tipo)).arg(tabla).arg(linea);
    }
    double valor(const QString& columna, int caballo, const QString& ch = "LOS PINOS") {
        return numberOf(env->db(),
                        ("SELECT " + columna + " FROM carreras_remate WHERE carrera = 1 AND ch = ? AND nu_caballo = ?")
                            .toStdString(),
                        {ch, caballo});
    }
    QString texto(const QString& columna, int caballo) {
        return textOf(env->db(),
                      ("SELECT " + columna + " FROM carreras_remate WHERE carrera = 1 AND nu_caballo = ?").toStdString(),
                      {caballo});
    }
    Form_Subasta* abrirTablero(MenuDePrueba& m, const QString& nombre) {
        auto* w = qobject_cast<Form_Subasta*>(m.abrir(nombre));
        if (!w) qFatal("sin tablero %s", qPrintable(nombre));
        hijo<QComboBox>(w, "carrera")->setEditText("1");
        QTest::mouseClick(hijo(w, "cargar"), Qt::LeftButton);
        return w;
    }

private slots:
    void initTestCase() {
        aplicarEstilo();
        env = std::make_unique<TestEnv>("form_subasta", true);
        fecha = fechaSql(env->clock.today());
    }
    void init() {
        env->loadDemo();
        env->dialogs.clear();
    }
    void cleanup() { cerrarDialogos(env->dialogs); }

    void tableros_data() {
        QTest::addColumn<QString>("tablero");
        QTest::addColumn<QSize>("pantalla");
        for (const DisenoSubasta& d : disenosSubasta()) {
            QVector<QSize> tamanos{{1366, 768}, {1024, 768}};
            if (d.rematetam == 1) tamanos = {{800, 600}, {1366, 768}};
            for (const QSize& t : tamanos)
                QTest::newRow(qPrintable(QString("%1 %2x%3").arg(d.nombre).arg(t.width()).arg(t.height())))
                    << d.nombre << t;
        }
    }
    void tableros() {
        QFETCH(QString, tablero);
        QFETCH(QSize, pantalla);
        const DisenoSubasta& d = *disenoSubasta(tablero);
        MenuDePrueba m(*env, "remate", pantalla);
        Form_Subasta* w = abrirTablero(m, tablero);
        QCOMPARE(w->logica().estado(), Subasta::Estado::Abierta);
        QCOMPARE(hijo<QLabel>(w, "caballo_0")->text(), QString("RELAMPAGO"));
        QVERIFY(!hijo(w, "caballo_8")->isVisible());  // the race has 8 horses
        // "C" is the house: the box turns it into "casa" as it is typed.
        const QStringList compradores = {"12", "7", "C", "21", "999"};
        for (bool tablita : {false, true}) {
            if (tablita) {
                if (!d.dosSubastas()) break;
                QTest::mouseClick(hijo(w, "tp"), Qt::LeftButton);
            }
            const LadoSubasta& lado = d.lado(tablita);
            for (int k = 0; k < lado.tablas.size(); ++k)
                for (int linea = 0; linea < 3; ++linea) {
                    teclear(w, celda("mesa", k, linea), compradores[(k + linea) % compradores.size()]);
                    teclear(w, celda("tabla", k, linea), QString::number(100 * (linea + 1) + 10 * k) + ",5");
                }
            for (int k = 0; k < lado.tablas.size(); ++k) {
                const int t = lado.tablas[k];
                QCOMPARE(valor(QString("tabla%1").arg(t), 3), 300.5 + 10 * k);
                QCOMPARE(texto(QString("mesa%1").arg(t), 1), compradorTecleado(compradores[k % compradores.size()]));
                const double total = 601.5 + 30 * k;
                QCOMPARE(hijo<QLabel>(w, QString("total_%1").arg(k))->text(), formatoDolar(total));
                QCOMPARE(hijo<QLabel>(w, QString("comision_%1").arg(k))->text(), formatoDolar(total * 0.2));
            }
            if (d.aGanarPorTabla) QCOMPARE(hijo<QLabel>(w, "aGanar_4")->text(), QString("(5) a ganar :"));
            teclear(w, "pote", "150");
            QCOMPARE(valor(lado.pote, 1), 150.0);
            QApplication::processEvents();
            grab(m.menu.get(), QString("%1%2_%3x%4")
                                   .arg(tablero, tablita ? "_TP" : "")
                                   .arg(pantalla.width())
                                   .arg(pantalla.height()));
        }
        // The board fits the menu's area at the size it is made for.
        const QSize area = m.menu->area()->viewport()->size();
        QVERIFY(w->minimumSizeHint().width() <= area.width());
        QVERIFY(w->minimumSizeHint().height() <= area.height());
    }

    // The demo day shows every board: each auctioneer's menu opens the
    // board of its group with race 1 already bid.
    void elDemoMuestraCadaTablero_data() {
        QTest::addColumn<QString>("usuario");
        QTest::addColumn<QString>("tablero");
        QTest::addColumn<QSize>("pantalla");
        QTest::newRow("remate") << "remate" << "Form_Subasta_2T" << QSize(1366, 768);
        QTest::newRow("remate800") << "remate800" << "Form_Subasta_2T_800" << QSize(800, 600);
        QTest::newRow("remate3t") << "remate3t" << "Form_Subasta_3T" << QSize(1366, 768);
        QTest::newRow("remate4t") << "remate4t" << "Form_Subasta_4T" << QSize(1366, 768);
        QTest::newRow("remate5t") << "remate5t" << "Form_Subasta_5T" << QSize(1366, 768);
        QTest::newRow("remateint") << "remateint" << "Form_SubastaINT_2T" << QSize(1366, 768);
    }
    void elDemoMuestraCadaTablero() {
        QFETCH(QString, usuario);
        QFETCH(QString, tablero);
        QFETCH(QSize, pantalla);
        cargarDemoSubastas(env->db(), env->clock.today());
        env->resetLocal();
        MenuDePrueba m(*env, usuario, pantalla);
        m.menu->boton("subasta_menu")->trigger();
        QApplication::processEvents();
        auto* w = qobject_cast<Form_Subasta*>(m.menu->area()->activeSubWindow()->widget());
        QVERIFY(w);
        QCOMPARE(w->objectName(), tablero);
        QTest::mouseClick(hijo(w, "cargar"), Qt::LeftButton);
        QCOMPARE(w->logica().estado(), Subasta::Estado::Abierta);
        QCOMPARE(w->logica().lineas()[0].montos[0], 540.0);
        QVERIFY(!hijo<QLineEdit>(w, celda("mesa", 0, 0))->text().isEmpty());
        QApplication::processEvents();
        grab(m.menu.get(), QString("demo_%1_%2x%3").arg(tablero).arg(pantalla.width()).arg(pantalla.height()));

        // The board's two reports: the race's lines and the day, each in the
        // report window of its kind, drawn from the local tables just refilled.
        const DisenoSubasta& d = *disenoSubasta(tablero);
        for (const auto& [boton, tipo, tabla] : {std::tuple{"reporteCarrera", d.reporteCarrera, "rpt_diarioremate"},
                                                 std::tuple{"reporteFinal", d.reporteFinal, "rpt_diariorematefinal"}}) {
            QTest::mouseClick(hijo(w, boton), Qt::LeftButton);
            auto* r = ultimaVentana<RPT_Diario_WIN>();
            QVERIFY2(r, boton);
            QCOMPARE(r->windowTitle(), tipoReporte(tipo)->titulo);
            r->resize(1366, 768);
            grab(r, QString("reporte_%1_%2").arg(tablero, boton));
            QVERIFY(numberOf(env->local(), QString("SELECT count(*) FROM %1 WHERE carrera = 1").arg(tabla).toStdString()) > 0);
            cerrarVentanas<RPT_Diario_WIN>();
        }
        QCOMPARE(env->dialogs.count(), 0);
    }

    void teclasDeLasCajas() {
        MenuDePrueba m(*env, "remate");
        Form_Subasta* w = abrirTablero(m, "Form_Subasta_2T");
        // "C" becomes "casa" as it is typed.
        auto* mesa = hijo<QLineEdit>(w, celda("mesa", 0, 0));
        mesa->setFocus();
        QTest::keyClick(mesa, Qt::Key_C);
        QCOMPARE(mesa->text(), QString("casa"));
        QTest::keyClick(mesa, Qt::Key_Return);
        QCOMPARE(texto("mesa1", 1), QString("casa"));
        // Amount boxes take digits and the comma only.
        auto* monto = hijo<QLineEdit>(w, celda("tabla", 0, 1));
        monto->setFocus();
        QTest::keyClicks(monto, "12.5a,75");
        QCOMPARE(monto->text(), QString("125,75"));
        QTest::keyClick(monto, Qt::Key_Return);
        QCOMPARE(valor("tabla1", 2), 125.75);
        // A pasted amount that is no amount is refused and the box shows the stored one.
        monto->setFocus();
        monto->selectAll();
        monto->insert("1,2,3");
        QTest::keyClick(monto, Qt::Key_Return);
        QCOMPARE(env->dialogs.last().text, QString("EL MONTO NO ES VALIDO"));
        QCOMPARE(monto->text(), QString("125,75"));
        QCOMPARE(valor("tabla1", 2), 125.75);
        env->dialogs.clear();
    }

    void numeroDeLineaInvalida() {
        MenuDePrueba m(*env, "remate");
        Form_Subasta* w = abrirTablero(m, "Form_Subasta_2T");
        teclear(w, celda("tabla", 0, 2), "90");
        QTest::mouseClick(hijo(w, "linea_2"), Qt::LeftButton);
        QCOMPARE(hijo<QLabel>(w, "estadoLinea_2")->text(), QString("INVALIDADO"));
        QCOMPARE(hijo<QLineEdit>(w, celda("mesa", 0, 2))->text(), QString("INV"));
        QCOMPARE(valor("invalidado", 3), 1.0);
        QTest::mouseClick(hijo(w, "linea_2"), Qt::LeftButton);
        QCOMPARE(valor("invalidado", 3), 0.0);
        QCOMPARE(hijo<QLabel>(w, "estadoLinea_2")->text(), QString());
        hijo<QCheckBox>(w, "retirado_4")->click();
        QCOMPARE(valor("retirado", 5), 1.0);
        QCOMPARE(hijo<QLabel>(w, "estadoLinea_4")->text(), QString("RETIRADO"));
    }

    void loQueEscribeOtraMaquina() {
        MenuDePrueba m(*env, "remate");
        Form_Subasta* w = abrirTablero(m, "Form_Subasta_2T");
        auto otra = env->connect();
        // The other machine shows the board before it writes a cell (on a
        // cluster its read waits until its node has the board's rows).
        otra->query("select id_carrera from carreras_remate");
        otra->exec("update carreras_remate set tabla2 = 480, mesa2 = '33' where nu_caballo = 4");
        // A box being typed into keeps what is typed.
        auto* escribiendo = hijo<QLineEdit>(w, celda("tabla", 0, 0));
        escribiendo->setFocus();
        QTest::keyClicks(escribiendo, "77");
        otra->exec("update carreras_remate set tabla1 = 5 where nu_caballo = 1");
        w->refrescar();
        QCOMPARE(hijo<QLineEdit>(w, celda("tabla", 1, 3))->text(), QString("480,00"));
        QCOMPARE(hijo<QLineEdit>(w, celda("mesa", 1, 3))->text(), QString("33"));
        QCOMPARE(hijo<QLabel>(w, "total_1")->text(), QString("$480.00"));
        QCOMPARE(escribiendo->text(), QString("77"));
        QTest::keyClick(escribiendo, Qt::Key_Return);
        QCOMPARE(valor("tabla1", 1), 77.0);
        otra->exec("update grupos set mensajech = 'CIERRE EN 5 MINUTOS' where grupo = '08'");
        w->refrescar();
        QCOMPARE(hijo<QLabel>(w, "mensaje")->text(), QString("CIERRE EN 5 MINUTOS"));
        otra->exec("update carreras set venta_rm = 0 where carrera = 1");
        w->refrescar();
        QCOMPARE(hijo<QLabel>(w, "estado")->text(), QString("CERRADO"));
        QVERIFY(escribiendo->isReadOnly());
        QApplication::processEvents();
        grab(m.menu.get(), "Form_Subasta_2T_cerrado");
    }

    void elSocioSoloMira() {
        {
            MenuDePrueba remate(*env, "remate");
            abrirTablero(remate, "Form_Subasta_2T");
        }
        MenuDePrueba m(*env, "socio");
        Form_Subasta* w = abrirTablero(m, "Form_Subasta_2T");
        QCOMPARE(w->logica().lineas().size(), 8);
        QVERIFY(hijo<QLineEdit>(w, celda("tabla", 0, 0))->isReadOnly());
        QVERIFY(hijo<QLineEdit>(w, "pote")->isReadOnly());
        QVERIFY(!hijo(w, "linea_0")->isEnabled());
        QVERIFY(!hijo(w, "redondear")->isEnabled());
        QVERIFY(!hijo(w, "pagoMinimo")->isEnabled());
        QVERIFY(!hijo(w, "enviarMensaje")->isEnabled());
    }

    void ganadorDeLaSubasta() {
        {
            MenuDePrueba remate(*env, "remate");
            Form_Subasta* w = abrirTablero(remate, "Form_Subasta_2T");
            teclear(w, celda("mesa", 0, 2), "999");
            teclear(w, celda("tabla", 0, 2), "400");
        }
        MenuDePrueba m(*env, "admin");
        QWidget* w = m.abrir("winremate_menu");
        QCOMPARE(w->objectName(), QString("Form_Admin_Remate"));
        QCOMPARE(hijo<QComboBox>(w, "centro")->itemText(0), QString("TODOS"));
        teclear(w, "carrera", "1");
        teclear(w, "caballo", "3");
        hijo<QComboBox>(w, "centro")->setCurrentText("LOS PINOS");
        QTest::mouseClick(hijo(w, "procesar"), Qt::LeftButton);
        QCOMPARE(env->dialogs.last().title, QString("Modificacion del Ganador"));
        QCOMPARE(env->dialogs.last().text, QString("Los Cambios fueron hechos Exitosamente "));
        QCOMPARE(valor("win", 1), 3.0);
        // The house bought horse 3 on table 1: its pool less the commission, and half the pot less the deduction.
        QCOMPARE(valor("monto_casa", 1), 400 - 80 + (0 - 50) / 2.0);
        QVERIFY(hijo<QLabel>(w, "resultado")->text().startsWith("LOS PINOS: monto para la casa $295.00"));
        grab(m.menu.get(), "Form_Admin_Remate_1366x768");
    }

    void reportePorFechas() {
        env->resetLocal();
        MenuDePrueba m(*env, "admin");
        QWidget* w = m.abrir("control61");
        QCOMPARE(w->objectName(), QString("Form_RptSubasta_Fechas"));
        QTest::mouseClick(hijo(w, "procesar"), Qt::LeftButton);
        auto* filas = hijo<QTableWidget>(w, "filas");
        QCOMPARE(filas->rowCount(), 4);  // the working day of every group
        QCOMPARE(filas->item(0, 0)->text(), QString("07"));
        QCOMPARE(numberOf(env->local(), "SELECT count(*) FROM rpt_general"), 4.0);
        grab(m.menu.get(), "Form_RptSubasta_Fechas_1366x768");
        QTest::mouseClick(hijo(w, "reporte"), Qt::LeftButton);
        QVERIFY(ultimaVentana<RPT_Diario_WIN>());
        QCOMPARE(ultimaVentana<RPT_Diario_WIN>()->windowTitle(), QString("REPORTE VENTA SUBASTA"));
        cerrarVentanas<RPT_Diario_WIN>();
    }

    void celdasDelEscritorio() {
        {
            MenuDePrueba remate(*env, "remate");
            abrirTablero(remate, "Form_Subasta_2T");
        }
        MenuDePrueba m(*env, "admin");
        QWidget* w = m.abrir("cg_menu");
        hijo<QTabWidget>(w, "pestanas")->setCurrentWidget(hijo(w, "panelSubasta"));
        hijo<QComboBox>(w, "centro")->setCurrentText("LOS PINOS");
        auto* tabla = hijo<QTableWidget>(w, "celdasSubasta");
        QCOMPARE(tabla->rowCount(), 8);
        tabla->item(1, 5)->setText("250");  // tabla2 of horse 2
        QCOMPARE(valor("tabla2", 2), 250.0);
        tabla->item(1, 4)->setText("c");  // mesa1
        QCOMPARE(texto("mesa1", 2), QString("casa"));
        teclear(w, "ganadorSubasta", "2");
        QCOMPARE(valor("win", 5), 2.0);
        QCOMPARE(valor("segundolugar", 5), 2.0);
        QCOMPARE(env->dialogs.last().text, QString("Los cambios se han realizado con exito"));
        QVERIFY(hijo<QLabel>(w, "porcentajesSubasta")->text().contains("Porcentaje del remate: 20"));
        grab(m.menu.get(), "Form_Admin_Win_subasta_1366x768");
    }
};

QTEST_MAIN(TstFormSubasta)
#include "tst_form_subasta.moc"
