// The Macuare windows driven offscreen on the demo's Macuare day: the sale
// from the keyboard alone (seven legs, amount, veces, name, Enter moving on
// and selling; the cursor on the leg at fault after a refusal; the closed
// label; payment and void by code), the administration settling the day
// from the typed winners, the quick results window and the display screen.
// Pictures of each at the booths' two screen sizes are kept.
#include "admin/Form_Admin_MC.h"
#include "core/Formato.h"
#include "gui/Estilo.h"
#include "sales/AjustesLocales.h"
#include "sales/Form_Venta_MC.h"
#include "schema/Demo.h"
#include "support/TestEnv.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

using namespace hipico;
using namespace hipico::test;

class TstFormMacuare : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QTemporaryDir carpeta;
    QString fecha;

    static QWidget* foco() { return QApplication::focusWidget(); }
    static QString enFoco() { return foco() ? foco()->objectName() : QString(); }
    static void teclear(const QString& t) { QTest::keyClicks(foco(), t); }
    static void enter() { QTest::keyClick(foco(), Qt::Key_Return); }
    void mostrar(QWidget& w, const QSize& tamano = {1366, 768}) {
        w.resize(tamano);
        w.show();
        QApplication::setActiveWindow(&w);
        QVERIFY(QTest::qWaitForWindowExposed(&w));
    }
    void fotos(QWidget& w, const QString& nombre) {
        for (const QSize t : {QSize(1024, 768), QSize(1366, 768)}) {
            w.resize(t);
            QApplication::processEvents();
            grab(&w, QString("%1_%2x%3").arg(nombre).arg(t.width()).arg(t.height()));
        }
    }
    // The seven legs, amount, veces and name typed with Enter after each.
    void jugada(const QStringList& piernas, const QString& monto, const QString& veces, const QString& nombre) {
        for (const QString& p : piernas) {
            teclear(p);
            enter();
        }
        teclear(monto);
        enter();
        QTest::keyClick(foco(), Qt::Key_A, Qt::ControlModifier);
        teclear(veces);
        enter();
        teclear(nombre);
        enter();
    }

private slots:
    void initTestCase() {
        aplicarEstilo();
        env = std::make_unique<TestEnv>("formmacuare", true);
        env->config.carpetaLocal = carpeta.path();
        env->ctx.config.carpetaLocal = carpeta.path();
        fecha = fechaSql(env->clock.today());
    }

    void init() {
        env->loadDemo();
        cargarDemoMacuare(env->db(), env->clock.today());
        env->signIn("taquilla2");
        env->ctx.session.confLocal.impresion = 0;
        env->dialogs.clear();
    }

    void cleanup() { cerrarDialogos(env->dialogs); }

    void saleFromTheKeyboard() {
        Form_Venta_MC w(env->ctx);
        mostrar(w);
        QCOMPARE(enFoco(), QString("Text_datos0"));
        QVERIFY(!w.findChild<QLabel*>("Label_Estado")->isVisible());
        const double antes = numberOf(env->db(), "SELECT count(*) FROM macuares");
        jugada({"1", "2", "3", "4", "5", "6", "1"}, "10", "2", "JOSÉ D'ANGELO");
        QCOMPARE(numberOf(env->db(), "SELECT count(*) FROM macuares"), antes + 1);
        QCOMPARE(textOf(env->db(), "SELECT concat_ws('|', combinacion, monto, veces, nombre) FROM macuares ORDER BY "
                                   "numero DESC LIMIT 1"),
                 QString("1-2-3-4-5-6-1|10|2|JOSÉ D'ANGELO"));
        QCOMPARE(enFoco(), QString("Text_datos0"));
        QVERIFY(w.findChild<QLabel*>("ultimoBoleto")->text().startsWith("ULTIMO BOLETO: 5"));
        QVERIFY(w.findChild<QTableWidget*>("Lista")->rowCount() > 0);
        fotos(w, "form_Venta_MC_vendido");
        // A horse that does not run in leg 4: refused, the cursor on that leg.
        jugada({"1", "2", "3", "13", "5", "6", "1"}, "10", "1", "ANA");
        QCOMPARE(env->dialogs.last().text, QString("Tiene Caballos con numeros no validos"));
        QCOMPARE(enFoco(), QString("Text_datos3"));
        env->dialogs.clear();
        // Voided by its code from its box (F6).
        const QString codigo = textOf(env->db(), "SELECT boleto FROM macuares ORDER BY numero DESC LIMIT 1");
        QTest::keyClick(&w, Qt::Key_F6);
        QCOMPARE(enFoco(), QString("Text_nu_ba"));
        teclear(codigo);
        enter();
        QCOMPARE(env->dialogs.last().text, QString("BOLETO ANULADO CON EXITO"));
        QCOMPARE(numberOf(env->db(), "SELECT count(*) FROM macuares WHERE boleto = ?", {codigo}), 0.0);
    }

    void paymentFromItsBox() {
        Form_Venta_MC w(env->ctx);
        mostrar(w);
        jugada({"1", "2", "3", "4", "5", "6", "1"}, "10", "1", "PEDRO");
        const QString codigo = textOf(env->db(), "SELECT boleto FROM macuares ORDER BY numero DESC LIMIT 1");
        env->db().exec("UPDATE macuares SET estatus = 1, cobrado = 500 WHERE boleto = ?", {codigo});
        QTest::keyClick(&w, Qt::Key_F5);
        teclear(codigo);
        enter();
        QCOMPARE(enFoco(), QString("Boton_Cobrar_Boleto2"));
        QVERIFY(w.findChild<QLabel*>("resultadoCobro")->text().startsWith("BOLETO GANADOR"));
        fotos(w, "form_Venta_MC_cobro");
        enter();
        QCOMPARE(textOf(env->db(), "SELECT estatus FROM macuares WHERE boleto = ?", {codigo}), QString("2"));
    }

    void closedLabel() {
        env->db().exec("UPDATE configuracion SET venta_macuare = 0");
        Form_Venta_MC w(env->ctx);
        mostrar(w);
        auto* estado = w.findChild<QLabel*>("Label_Estado");
        QVERIFY(estado->isVisible());
        QCOMPARE(estado->text(), QString("CERRADO"));
        fotos(w, "form_Venta_MC_cerrado");
    }

    // The administration settles the day from the winners typed; the quick
    // results window shows what is still alive; the screen shows the legs.
    void administrationExpressAndScreen() {
        env->signIn("admin");
        env->dialogs.clear();
        Form_Admin_MC w(env->ctx);
        mostrar(w);
        QCOMPARE(w.ganadores(0)->text(), QString("4"));
        QCOMPARE(w.ganadores(1)->text(), QString("6"));
        QWidget* express = w.Express_Click();
        QVERIFY(express);
        auto* e = qobject_cast<Form_Admin_Express*>(express);
        QCOMPARE(e->pierna()->currentIndex(), 2);
        const int vivosAntes = e->vivos()->rowCount();
        QVERIFY(vivosAntes > 0);
        e->caballos()->setText("1-2");
        e->Fijar_Click();
        QCOMPARE(e->pierna()->currentIndex(), 3);
        QCOMPARE(textOf(env->db(), "SELECT concat_ws(':', c3_1, c3_2) FROM caballos_ganadores WHERE fecha = ?", {fecha}),
                 QString("1:2"));
        fotos(*express, "Form_Admin_Express");
        express->close();
        QCOMPARE(w.ganadores(2)->text(), QString("1-2"));

        for (int i = 3; i < 7; ++i) w.ganadores(i)->setText("1");
        w.Procesar_Click();
        QCOMPARE(env->dialogs.last().text, QString("MACUARE PROCESADO CON EXITO"));
        QCOMPARE(numberOf(env->db(), "SELECT procesado FROM macuare_dias WHERE fecha = ?", {fecha}), 1.0);
        QVERIFY(w.findChild<QLabel*>("liquidacion")->text().startsWith("VENTA: "));
        fotos(w, "form_Admin_MC");
        // The day's summary per group, through the report launcher (kind 14).
        QVERIFY(w.Diario_Click());
        QVERIFY(numberOf(env->local(), "SELECT count(*) FROM rpt_diario_mc") > 0);
        // Again: asked first.
        env->dialogs.no();
        w.Procesar_Click();
        QCOMPARE(env->dialogs.last().text, QString("Este macuare ya fue procesado, ¿Desea hacerlo de nuevo?"));
        env->dialogs.clear();

        Form_Pant_MC p(env->ctx);
        mostrar(p);
        QVERIFY(p.findChild<QLabel*>("pozo")->text().startsWith("POZO: "));
        fotos(p, "Form_Pant_MC");

        Form_combinaciones c(env->ctx);
        mostrar(c);
        QVERIFY(c.findChild<QTableWidget*>("Grilla")->rowCount() > 0);
        fotos(c, "Form_combinaciones");
    }
};

QTEST_MAIN(TstFormMacuare)
#include "tst_formmacuare.moc"
