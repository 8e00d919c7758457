// The sale window driven from the keyboard alone, offscreen: race, horse,
// amount and Enter sell and print; the password frame; a scanned code and
// Enter, then Enter again, pay; Esc cancels. Pictures of the window are kept.
#include "BoothFixture.h"

#include "sales/Form_RPT_CuadreTaqWIn.h"
#include "sales/Form_Venta_WIN.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

using namespace hipico;
using namespace hipico::test;

class TstFormVenta : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QTemporaryDir carpeta;
    QString puerto;

    static QWidget* foco() { return QApplication::focusWidget(); }
    static void teclear(const QString& texto) { QTest::keyClicks(foco(), texto); }
    static void enter() { QTest::keyClick(foco(), Qt::Key_Return); }
    template <class T>
    static T* hijo(QWidget& w, const char* nombre) {
        auto* h = w.findChild<T*>(nombre);
        if (!h) qFatal("falta %s", nombre);
        return h;
    }
    void abrir(Form_Venta_WIN& w) {
        w.show();
        QApplication::setActiveWindow(&w);
        QVERIFY(QTest::qWaitForWindowActive(&w));
    }

private slots:
    void initTestCase() {
        env = entorno("formventa", carpeta.path());
        puerto = carpeta.filePath("boletos.prn");
    }

    void cleanup() { cerrarDialogos(env->dialogs); }

    void init() {
        empezarDia(*env, puerto);
        guardarUnidadVenta(env->config, UnidadVenta::Ganadores);
    }

    void sellFromTheKeyboard() {
        Form_Venta_WIN w(env->ctx);
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        abrir(w);
        // The window starts on the group's open race, in the horse box.
        QCOMPARE(hijo<QLineEdit>(w, "Text_Carrera")->text(), QString("1"));
        QCOMPARE(foco()->objectName(), QString("Text_Caballo"));
        teclear("3");
        QCOMPARE(w.findChild<QLabel*>("nombreCaballo")->text(), QString("GRAN CAPITAN"));
        enter();
        QCOMPARE(foco()->objectName(), QString("Text_cliente"));
        enter();
        QCOMPARE(foco()->objectName(), QString("Text_Monto"));
        teclear("2.5");  // the point is swallowed: the decimal separator is the comma
        QCOMPARE(hijo<QLineEdit>(w, "Text_Monto")->text(), QString("25"));
        QTest::keyClick(foco(), Qt::Key_Backspace);
        teclear(",5");
        grab(&w, "Form_Venta_WIN_durante_venta");
        enter();
        QVERIFY(env->dialogs.shown().isEmpty());
        const Row t = env->db().query("SELECT * FROM ma_principal").first();
        QCOMPARE(t.number("ganadores"), 2.5);
        QCOMPARE(t.integer("caballo"), 3LL);
        QVERIFY(leerPuerto(puerto).contains("BOLETO: " + t.text("nu_boleto") + " C: 1"));
        QVERIFY(w.findChild<QLabel*>("ultimoBoleto")->text().contains(t.text("nu_boleto")));
        // Ready for the next sale: horse and amount cleared, the race kept.
        QCOMPARE(foco()->objectName(), QString("Text_Caballo"));
        QCOMPARE(hijo<QLineEdit>(w, "Text_Monto")->text(), QString());
        QCOMPARE(hijo<QLineEdit>(w, "Text_Carrera")->text(), QString("1"));
        grab(&w, "Form_Venta_WIN_vendido");

        // Esc cancels what was typed.
        teclear("5");
        QTest::keyClick(foco(), Qt::Key_Escape);
        QCOMPARE(hijo<QLineEdit>(w, "Text_Caballo")->text(), QString());

        // A refusal leaves the amount selected for retyping, nothing sold.
        teclear("9");
        enter();
        enter();
        teclear("5");
        enter();
        QCOMPARE(env->dialogs.last().text, QString("EL NUMERO DE CABALLO NO ES VALIDO"));
        QCOMPARE(foco()->objectName(), QString("Text_Monto"));
        QCOMPARE(contar(env->db(), "ma_principal"), 1LL);
    }

    void passwordFrameFromTheKeyboard() {
        Form_Venta_WIN w(env->ctx);
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        abrir(w);
        teclear("4");
        enter();
        enter();
        teclear("600");
        enter();
        QCOMPARE(env->dialogs.last().text, QString("EL MONTO ES MAYOR AL PERMITIDO, DISPONIBLE: 500"));
        auto* frame = w.findChild<QFrame*>("frameClave");
        QVERIFY(frame->isVisible());
        QCOMPARE(foco()->objectName(), QString("Text_Clave"));
        grab(&w, "Form_Venta_WIN_clave");
        // Esc closes the frame without selling.
        QTest::keyClick(foco(), Qt::Key_Escape);
        QVERIFY(!frame->isVisible());
        QCOMPARE(contar(env->db(), "ma_principal"), 0LL);
        // Again, with the supervisor's password.
        enter();
        QVERIFY(frame->isVisible());
        teclear("1234");
        enter();
        QVERIFY(!frame->isVisible());
        QCOMPARE(numberOf(env->db(), "SELECT ganadores FROM ma_principal"), 600.0);
        QCOMPARE(textOf(env->db(), "SELECT llave FROM ma_principal"), QString("0"));
        QVERIFY(w.findChild<QLabel*>("ultimoBoleto")->text().contains("(CLAVE)"));
    }

    void payAScannedTicket() {
        Form_Venta_WIN w(env->ctx);
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        abrir(w);
        const auto venta = w.logica().procesarVenta("1", "3", "5");
        liquidar(env->db(), fechaSql(env->clock.today()), 1, 3, 12.5);
        QTest::keyClick(&w, Qt::Key_F5);
        QCOMPARE(foco()->objectName(), QString("Text_boletoCobro"));
        teclear(venta.boleto.codigo);  // a scanner types the code and Enter
        enter();
        auto* cobrar = hijo<QPushButton>(w, "Boton_Cobrar_Boleto2");
        QVERIFY(cobrar->isEnabled());
        QCOMPARE(foco(), cobrar);
        QCOMPARE(w.findChild<QLabel*>("resultadoCobro")->text(), QString("CABALLO GANADOR   Bs. 62,50"));
        grab(&w, "Form_Venta_WIN_cobro");
        enter();
        QCOMPARE(textOf(env->db(), "SELECT estatus FROM ma_principal"), QString("2"));
        QVERIFY(!cobrar->isEnabled());
        QCOMPARE(foco()->objectName(), QString("Text_boletoCobro"));
        QVERIFY(leerPuerto(puerto).contains("MONTO COBRADO : Bs. 62,50"));
        // Scanned again: already paid.
        teclear(venta.boleto.codigo);
        enter();
        QCOMPARE(env->dialogs.last().text, QString("BOLETO YA PAGADO"));
        QVERIFY(!cobrar->isEnabled());
    }

    void saleUnitFromTheMenu() {
        Form_Venta_WIN w(env->ctx);
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        abrir(w);
        QAction* bolivares = nullptr;
        for (QAction* a : w.findChildren<QAction*>())
            if (a->text() == "Jugada en Bs") bolivares = a;
        QVERIFY(bolivares);
        env->dialogs.yes();
        bolivares->trigger();
        QCOMPARE(env->dialogs.last().text, QString("Los cambios se hicierón con exíto"));
        QCOMPARE(foco()->objectName(), QString("Text_Monto"));
        teclear("30");
        enter();
        QCOMPARE(numberOf(env->db(), "SELECT ganadores FROM ma_principal"), 0.0);  // no horse yet
        QTest::keyClick(foco(), Qt::Key_Escape);
        teclear("2");
        enter();
        enter();
        teclear("30");
        enter();
        QCOMPARE(numberOf(env->db(), "SELECT ganadores FROM ma_principal"), 3.0);
        grab(&w, "Form_Venta_WIN_bolivares");
        guardarUnidadVenta(env->ctx.config, UnidadVenta::Ganadores);
    }

    void boothSummaryWindow() {
        ventaCargada(env->ctx).procesarVenta("1", "3", "5");
        env->signIn("admin");
        Form_RPT_CuadreTaqWIn w(env->ctx);
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QCOMPARE(w.findChild<QComboBox*>("Combo_Grupo")->currentText(), QString("TODOS"));
        QTest::mouseClick(w.findChild<QPushButton*>("Boton_Buscar"), Qt::LeftButton);
        QCOMPARE(w.grilla()->rowCount(), 1);
        QCOMPARE(w.grilla()->item(0, 0)->text(), QString("LOS PINOS"));
        QCOMPARE(w.grilla()->item(0, 2)->text(), QString("Bs. 50,00"));
        grab(&w, "Form_RPT_CuadreTaqWIn");
    }
};

QTEST_MAIN(TstFormVenta)
#include "tst_form_venta.moc"
