// The winners administration window driven offscreen: a race processed from
// the keyboard, a scratch cell, the rule tab, a ticket found and paid; the
// window is grabbed with the processed race.
#include "support/Boletos.h"
#include "admin/Form_Admin_Win.h"
#include "gui/RecordsetModel.h"
#include "support/TestEnv.h"

#include <QCheckBox>
#include <QComboBox>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QtTest>

using namespace hipico;
using namespace hipico::test;

class TstFormAdminWin : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QDate hoy;
    Form_Admin_Win* w = nullptr;

    template <class T>
    T* hijo(const char* nombre) {
        T* h = w->findChild<T*>(nombre);
        if (!h) qFatal("no existe %s", nombre);
        return h;
    }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("admin_form");
        env->loadDemo();
        env->signIn("admin");
        hoy = env->clock.today();
        for (const char* g : {"07", "08", "12", "15"})
            for (int caballo = 1; caballo <= 8; ++caballo)
                venderBoleto(env->db(), hoy, 1, caballo, caballo % 3 + 1, g,
                             QString(g) < "10" ? "LOS PINOS" : "MARACAY");
        w = new Form_Admin_Win(env->ctx);
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w));
    }

    void cleanupTestCase() { delete w; }

    void init() { env->dialogs.clear(); }
    void cleanup() { cerrarDialogos(env->dialogs); }

    void showsTheRace() {
        QCOMPARE(hijo<QComboBox>("hipodromo")->currentText(), QString("LA RINCONADA"));
        QCOMPARE(hijo<QTableWidget>("carreraTabla")->rowCount(), 8);
        const QListWidget* ventas = hijo<QListWidget>("ventas");
        QCOMPARE(ventas->item(0)->text(), QString("        CABALLO          VENTA"));
        QCOMPARE(ventas->count(), 1 + 8 + 2);
        QVERIFY(ventas->item(10)->text().startsWith("Venta en Bsf:     Bs. "));
    }

    void processFromTheKeyboard() {
        QLineEdit* ganador = hijo<QLineEdit>("ganador");
        // Tab leaves the winner's box for the dividend, and Shift+Tab comes back.
        ganador->setFocus();
        QTest::keyClick(ganador, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), hijo<QLineEdit>("dividendo"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget(), ganador);
        QTest::keyClicks(ganador, "3x");  // letters do not get in
        QCOMPARE(ganador->text(), QString("3"));
        QTest::keyClick(ganador, Qt::Key_Return);
        QLineEdit* dividendo = hijo<QLineEdit>("dividendo");
        QVERIFY(dividendo->hasFocus());
        QTest::keyClicks(dividendo, "5,2");
        QTest::keyClick(dividendo, Qt::Key_Return);
        QTest::keyClick(hijo<QLineEdit>("ganador2"), Qt::Key_Return);
        QLineEdit* dividendo2 = hijo<QLineEdit>("dividendo2");
        QTest::keyClick(dividendo2, Qt::Key_Return);
        QPushButton* procesar = hijo<QPushButton>("procesar");
        QVERIFY(procesar->hasFocus());
        QTest::keyClick(procesar, Qt::Key_Return);

        QCOMPARE(env->dialogs.last().text, QString("CARRERA PROCESADA CON EXITO"));
        Db& db = env->db();
        QCOMPARE(numberOf(db, "SELECT count(*) FROM ma_principal WHERE carrera = 1 AND estatus = 1"), 4.0);
        QCOMPARE(numberOf(db, "SELECT cobrado / ganadores FROM ma_principal WHERE carrera = 1 AND estatus = 1 AND "
                              "grupo = '07'"),
                 6.2);
        QCOMPARE(numberOf(db, "SELECT cobrado / ganadores FROM ma_principal WHERE carrera = 1 AND estatus = 1 AND "
                              "grupo = '12'"),
                 5.7);
        const QTableWidget* proceso = hijo<QTableWidget>("proceso");
        QCOMPARE(proceso->rowCount(), 4);
        QCOMPARE(proceso->item(0, 0)->text(), QString("07"));
        QCOMPARE(proceso->item(0, 3)->text(), QString("6.2"));
        QCOMPARE(proceso->item(2, 3)->text(), QString("5.7"));
        QCOMPARE(proceso->item(2, 4)->text(), QString("1"));

        // Processing again asks first.
        env->dialogs.no();
        QTest::mouseClick(procesar, Qt::LeftButton);
        QCOMPARE(env->dialogs.last().text, QString("Esta carrera ya fue procesada, ¿Desea hacerlo de nuevo?"));
        grab(w, "form_admin_win_procesada");
    }

    void scratchCellWritesTheCard() {
        QTableWidget* t = hijo<QTableWidget>("carreraTabla");
        QTableWidgetItem* ret = t->item(6, 4);
        const long long id = t->item(6, 0)->text().toLongLong();
        ret->setCheckState(Qt::Checked);
        QCOMPARE(numberOf(env->db(), "SELECT retirado FROM carreras WHERE id_carrera = ?", {id}), 1.0);
        QTest::qWait(10);
        QCOMPARE(hijo<QTableWidget>("carreraTabla")->item(6, 4)->text(), QString("RET"));
        hijo<QTableWidget>("carreraTabla")->item(6, 4)->setCheckState(Qt::Unchecked);
        QCOMPARE(numberOf(env->db(), "SELECT retirado FROM carreras WHERE id_carrera = ?", {id}), 0.0);
    }

    void ruleTabFollowsTheCentre() {
        hijo<QComboBox>("centro")->setCurrentText("MARACAY");
        QCOMPARE(hijo<QComboBox>("grupo")->count(), 3);
        QCOMPARE(hijo<QLineEdit>("valor_r2")->text(), QString("0.5"));
        QCOMPARE(hijo<QLineEdit>("cab16")->text(), QString("300"));
        hijo<QComboBox>("grupo")->setCurrentText("12");
        hijo<QTabWidget>("pestanas")->setCurrentIndex(1);
        grab(w, "form_admin_win_cupos");
        insertar(env->db(), Descarga{fechaSql(hoy), "10:00:00", "MARACAY", "12", 1, 3, 6, 0}.insercion());
        QTest::mouseClick(hijo<QPushButton>("actualizar"), Qt::LeftButton);
        hijo<QTabWidget>("pestanas")->setCurrentIndex(3);
        grab(w, "form_admin_win_descargas");
        hijo<QTabWidget>("pestanas")->setCurrentIndex(2);
        grab(w, "form_admin_win_dividendos");
        hijo<QLineEdit>("valor_r2")->setText("0,75");
        QTest::mouseClick(hijo<QPushButton>("guardarRegla"), Qt::LeftButton);
        QCOMPARE(env->dialogs.last().text, QString("Los cambios se han realizado con exito"));
        QCOMPARE(numberOf(env->db(), "SELECT sum(valor_r2) FROM grupos WHERE ch = 'MARACAY'"), 1.5);
        hijo<QComboBox>("centro")->setCurrentText("TODOS");
        hijo<QComboBox>("grupo")->setCurrentText("TODOS");
        // With every centre the limits and the rule are nobody's: empty boxes that say why.
        QVERIFY(!hijo<QLineEdit>("valor_r2")->isEnabled());
        QCOMPARE(hijo<QLineEdit>("valor_r2")->text(), QString());
        QCOMPARE(hijo<QLineEdit>("cab1")->text(), QString());
        QVERIFY(hijo<QLabel>("avisoRegla")->text().contains("elija uno (no \"TODOS\")"));
        QVERIFY(hijo<QLabel>("avisoCupos")->text().contains("elija uno (no \"TODOS\")"));
        hijo<QTabWidget>("pestanas")->setCurrentIndex(1);
        grab(w, "form_admin_win_cupos_todos");
    }

    void findAndPayATicket() {
        hijo<QTabWidget>("pestanas")->setCurrentIndex(4);
        hijo<QComboBox>("clase")->setCurrentText("POR PAGAR");
        QTest::mouseClick(hijo<QPushButton>("buscar"), Qt::LeftButton);
        QTableView* boletos = hijo<QTableView>("boletos");
        QCOMPARE(boletos->model()->rowCount(), 4);
        QCOMPARE(boletos->model()->headerData(0, Qt::Horizontal).toString(), QString(" BOLETO "));
        QCOMPARE(boletos->model()->data(boletos->model()->index(0, 6)).toString(), QString("POR PAGAR"));
        boletos->setCurrentIndex(boletos->model()->index(1, 0));
        const long long numero = hijo<QLineEdit>("numero")->text().toLongLong();
        QVERIFY(numero >= 1000);
        env->dialogs.type("COBRADO");
        QTest::mouseClick(hijo<QPushButton>("pagar"), Qt::LeftButton);
        QCOMPARE(env->dialogs.last().text, QString("BOLETO COBRADO CON EXITO"));
        QCOMPARE(numberOf(env->db(), "SELECT estatus FROM ma_principal WHERE numero = ?", {numero}), 2.0);
        QCOMPARE(boletos->model()->rowCount(), 3);  // searched again
        QVERIFY(hijo<QLabel>("boletosTotal")->text().startsWith("Boletos: 3"));
        grab(w, "form_admin_win_boletos");
    }

    void escapeLeavesTheDesk() {
        QPointer<Form_Admin_Win> otra = new Form_Admin_Win(env->ctx);
        otra->show();
        QTest::keyClick(otra, Qt::Key_Escape);
        QTRY_VERIFY(otra.isNull());
    }
};

QTEST_MAIN(TstFormAdminWin)
#include "tst_formadminwin.moc"
