// The managers' windows driven offscreen, each as its demo manager opens it:
// caption, the scope's choices and sales, the manager's search, a typed code
// of another scope refused, block and restore, the booth message; both are
// grabbed at the booths' screen sizes.
#include "support/Boletos.h"
#include "admin/Form_Gerencia.h"
#include "support/TestEnv.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
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

class TstFormGerencia : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    QDate hoy;
    QMap<QString, BoletoDePrueba> boletos;

    template <class T>
    static T* hijo(QWidget* w, const char* nombre) {
        T* h = w->findChild<T*>(nombre);
        if (!h) qFatal("no existe %s", nombre);
        return h;
    }
    // The window of a manager, signed in.
    std::unique_ptr<Form_Admin_Win> abrir(const QString& ventana, const QString& usuario) {
        env->signIn(usuario);
        env->dialogs.clear();
        std::unique_ptr<Form_Admin_Win> w;
        if (ventana == "Form_Geren_Ganadores") w = std::make_unique<Form_Geren_Ganadores>(env->ctx);
        else w = std::make_unique<Form_Gerencia_Grupos>(env->ctx);
        w->show();
        return w;
    }
    // The sales list's line of a horse ("" when not listed).
    static QString lineaCaballo(QWidget* w, int caballo) {
        const auto* ventas = hijo<QListWidget>(w, "ventas");
        for (int i = 1; i < ventas->count(); ++i)
            if (ventas->item(i)->text().left(15).trimmed() == QString::number(caballo)) return ventas->item(i)->text();
        return {};
    }
    static void pestana(QWidget* w, const QString& titulo) {
        auto* p = hijo<QTabWidget>(w, "pestanas");
        for (int i = 0; i < p->count(); ++i)
            if (p->tabText(i) == titulo) p->setCurrentIndex(i);
    }

    // The two windows, each with its manager: the groups in its scope and one outside.
    void ventanas() {
        QTest::addColumn<QString>("ventana");
        QTest::addColumn<QString>("usuario");
        QTest::addColumn<QString>("nombre");
        QTest::addColumn<QStringList>("grupos");  // the group choices
        QTest::addColumn<QString>("fuera");
        QTest::addColumn<int>("ventaCaballo3");   // race 1, horse 3, in the scope
        QTest::newRow("centro") << "Form_Geren_Ganadores" << "gerente" << "GERENTE LOS PINOS"
                                << QStringList{"07"} << "08" << 2;
        QTest::newRow("subgrupo") << "Form_Gerencia_Grupos" << "gerentesub" << "GERENTE OCCIDENTE"
                                  << QStringList{"TODOS", "12", "15"} << "07" << 11;
    }

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("gerencia_form", true);
        env->loadDemo();
        // The manager of a group of the other subgroup (OCCIDENTE).
        env->db().exec("INSERT INTO usuarios (usuario, clave, nombre, nivel, grupo, ch, estatus) VALUES "
                       "('gerentesub', '', 'GERENTE OCCIDENTE', 'Gerente', '12', 'MARACAY', 'Activo')");
        hoy = env->clock.today();
        boletos["07"] = venderBoleto(env->db(), hoy, 1, 3, 2, "07", "LOS PINOS");
        boletos["08"] = venderBoleto(env->db(), hoy, 1, 3, 5, "08", "LOS PINOS");
        boletos["12"] = venderBoleto(env->db(), hoy, 1, 3, 11, "12", "MARACAY");
        boletos["15"] = venderBoleto(env->db(), hoy, 1, 4, 17, "15", "MARACAY");
    }

    void init() { env->dialogs.clear(); }
    void cleanup() { cerrarDialogos(env->dialogs); }

    void opensInItsScope_data() { ventanas(); }
    void opensInItsScope() {
        QFETCH(QString, ventana);
        QFETCH(QString, usuario);
        QFETCH(QString, nombre);
        QFETCH(QStringList, grupos);
        QFETCH(int, ventaCaballo3);
        auto w = abrir(ventana, usuario);
        QCOMPARE(w->objectName(), ventana);
        QCOMPARE(w->windowTitle(), "Admin: " + nombre);
        auto* grupo = hijo<QComboBox>(w.get(), "grupo");
        QStringList opciones;
        for (int i = 0; i < grupo->count(); ++i) opciones << grupo->itemText(i);
        if (ventana == "Form_Geren_Ganadores") {
            QCOMPARE(grupo->currentText(), QString("07"));
            QVERIFY(!grupo->isEnabled());
        } else {
            QCOMPARE(opciones, grupos);
        }
        QCOMPARE(lineaCaballo(w.get(), 3).left(30), QString("%1%2").arg(3, 15).arg(ventaCaballo3, 15));
        QVERIFY(hijo<QLabel>(w.get(), "dia")->text().contains("Monto Cobrado :           "));
        QVERIFY(hijo<QLabel>(w.get(), "contacto")->text().contains("0414-5550101"));
        // The sales per booth close with "Total:".
        QVERIFY(hijo<QListWidget>(w.get(), "taqLista")->item(hijo<QListWidget>(w.get(), "taqLista")->count() - 1)
                    ->text()
                    .startsWith("Total:"));
        // Every tab at the booths' screen sizes.
        auto* pestanas = hijo<QTabWidget>(w.get(), "pestanas");
        for (const QSize t : {QSize(1366, 768), QSize(1024, 768)}) {
            w->resize(t);
            for (int i = 0; i < pestanas->count(); ++i) {
                pestanas->setCurrentIndex(i);
                QApplication::processEvents();
                grab(w.get(), QString("%1_%2_%3x%4").arg(ventana).arg(i).arg(t.width()).arg(t.height()));
            }
            pestanas->setCurrentIndex(0);
        }
        QCOMPARE(env->dialogs.count(), 0);
    }

    void searchAndVoidInScope_data() { ventanas(); }
    void searchAndVoidInScope() {
        QFETCH(QString, ventana);
        QFETCH(QString, usuario);
        QFETCH(QString, fuera);
        auto w = abrir(ventana, usuario);
        pestana(w.get(), "Boletos");
        QTest::mouseClick(hijo<QPushButton>(w.get(), "buscar"), Qt::LeftButton);
        QTableView* grilla = hijo<QTableView>(w.get(), "boletos");
        QCOMPARE(grilla->model()->headerData(4, Qt::Horizontal).toString(), QString(" DOLARS "));
        QCOMPARE(grilla->model()->headerData(3, Qt::Horizontal).toString(), QString(" GAND "));
        for (int r = 0; r < grilla->model()->rowCount(); ++r)
            QVERIFY(grilla->model()->data(grilla->model()->index(r, 7)).toString() != fuera);
        // Another scope's ticket by its code: refused, still there.
        env->dialogs.type(boletos[fuera].codigo).type("ANULADO");
        QTest::mouseClick(hijo<QPushButton>(w.get(), "anularGerencia"), Qt::LeftButton);
        QCOMPARE(env->dialogs.last().text, QString("EL BOLETO NO SE PUEDE ANULAR"));
        QCOMPARE(numberOf(env->db(), "SELECT count(*) FROM ma_principal WHERE numero = ?", {boletos[fuera].numero}),
                 1.0);
    }

    void blockRestoreAndMessage() {
        auto w = abrir("Form_Geren_Ganadores", "gerente");
        pestana(w.get(), "Cupos");
        QTest::mouseClick(hijo<QPushButton>(w.get(), "bloquearCupos"), Qt::LeftButton);
        QCOMPARE(hijo<QLineEdit>(w.get(), "cab14")->text(), QString("0"));
        QCOMPARE(hijo<QLineEdit>(w.get(), "cab15")->text(), QString("500"));
        QCOMPARE(numberOf(env->db(), "SELECT cab1 FROM venta_cupo_ganadores WHERE ch = 'MARACAY'"), 300.0);
        QTest::mouseClick(hijo<QPushButton>(w.get(), "restaurarCupos"), Qt::LeftButton);
        QCOMPARE(hijo<QLineEdit>(w.get(), "cab14")->text(), QString("500"));
        // The auction tab shows the group's percentages.
        const auto etiquetas = w->findChildren<QLabel*>();
        QVERIFY(std::any_of(etiquetas.begin(), etiquetas.end(),
                            [](const QLabel* l) { return l->text().contains("Porcentaje del remate: 20"); }));
        pestana(w.get(), "Mensaje");
        QCOMPARE(hijo<QLineEdit>(w.get(), "mensaje")->text(), QString("BIENVENIDOS"));
        hijo<QLineEdit>(w.get(), "mensaje")->setText("CIERRE 6PM");
        QTest::mouseClick(hijo<QPushButton>(w.get(), "guardarMensaje"), Qt::LeftButton);
        QCOMPARE(env->dialogs.last().text, QString("Los cambios se han realizado con exito"));
        QCOMPARE(textOf(env->db(), "SELECT mensajech FROM grupos WHERE grupo = '07'"), QString("CIERRE 6PM"));
        QTest::mouseClick(hijo<QPushButton>(w.get(), "borrarMensaje"), Qt::LeftButton);
        QCOMPARE(env->dialogs.last().text, QString("Mensaje Borrado"));
        QCOMPARE(hijo<QLineEdit>(w.get(), "mensaje")->text(), QString());
        grab(w.get(), "Form_Geren_Ganadores_mensaje");
    }

    // Sold against limit per horse: block, restore and an edited cell show
    // at once beside the sales; horses 15 and 16 keep their limits.
    void limitsBesideSales_data() {
        QTest::addColumn<QString>("ventana");
        QTest::addColumn<QString>("usuario");
        QTest::addColumn<QString>("centro");
        QTest::addColumn<int>("venta");  // race 1, horse 3
        QTest::newRow("centro") << "Form_Geren_Ganadores" << "gerente" << "LOS PINOS" << 2;
        QTest::newRow("subgrupo") << "Form_Gerencia_Grupos" << "gerentesub" << "MARACAY" << 11;
    }
    void limitsBesideSales() {
        QFETCH(QString, ventana);
        QFETCH(QString, usuario);
        QFETCH(QString, centro);
        QFETCH(int, venta);
        auto w = abrir(ventana, usuario);
        auto* centros = hijo<QComboBox>(w.get(), "centro");
        // Every centre: no limits to show.
        if (centros->isEnabled()) {
            centros->setCurrentText("TODOS");
            QCOMPARE(hijo<QListWidget>(w.get(), "ventas")->item(0)->text(), QString("        CABALLO          VENTA"));
            centros->setCurrentText(centro);
        }
        auto linea = [&](const QString& cupo) { return QString("%1%2%3").arg(3, 15).arg(venta, 15).arg(cupo, 10); };
        QCOMPARE(hijo<QListWidget>(w.get(), "ventas")->item(0)->text(),
                 QString("        CABALLO          VENTA      CUPO"));
        // Every horse of the race is listed, the unsold ones with 0.
        QCOMPARE(lineaCaballo(w.get(), 1).mid(15, 15).trimmed(), QString("0"));
        const QString antes = textOf(env->db(), "SELECT cab3 FROM venta_cupo_ganadores WHERE ch = ?", {centro});
        QCOMPARE(lineaCaballo(w.get(), 3), linea(antes));
        pestana(w.get(), "Cupos");
        QTest::mouseClick(hijo<QPushButton>(w.get(), "bloquearCupos"), Qt::LeftButton);
        QCOMPARE(lineaCaballo(w.get(), 3), linea("0"));
        QTest::mouseClick(hijo<QPushButton>(w.get(), "restaurarCupos"), Qt::LeftButton);
        QCOMPARE(lineaCaballo(w.get(), 3), linea("500"));
        auto* cab3 = hijo<QLineEdit>(w.get(), "cab3");
        cab3->setText("75");
        cab3->setModified(true);
        emit cab3->editingFinished();
        QCOMPARE(lineaCaballo(w.get(), 3), linea("75"));
        QCOMPARE(numberOf(env->db(), "SELECT cab3 FROM venta_cupo_ganadores WHERE ch = ?", {centro}), 75.0);
        QCOMPARE(numberOf(env->db(), "SELECT cab15 + cab16 FROM venta_cupo_ganadores WHERE ch = ?", {centro}),
                 centro == "MARACAY" ? 600.0 : 1000.0);
        pestana(w.get(), "Ventas");
        grab(w.get(), ventana + "_cupos_en_ventas");
    }

    // A track without the centre's rule rows: restoring the limits and the
    // rule tab (read and save) are refused with a box, and nothing changes.
    void trackWithoutRuleRefused() {
        env->db().exec("DELETE FROM dividendos WHERE ch = 'LOS PINOS' AND id_hipodromo = 2");
        env->ctx.session.modoventa = 1;
        auto w = abrir("Form_Geren_Ganadores", "gerente");
        env->ctx.session.modoventa = 1;
        hijo<QComboBox>(w.get(), "hipodromo")->setCurrentText("SANTA RITA");
        QCOMPARE(env->dialogs.count(), 0);  // not in front yet
        const QStringList antes = foto(env->db(), {"venta_cupo_ganadores", "dividendos", "dividendos_ampliados", "grupos"});
        auto esperar = [&] {
            QCOMPARE(env->dialogs.count(), 1);
            esperarCaja(env->dialogs, "Verifique e intente nuevamente",
                        "El Hipodromo seleccionado no presenta registros de dividendos");
            env->dialogs.clear();
        };
        pestana(w.get(), "Cupos");
        QTest::mouseClick(hijo<QPushButton>(w.get(), "restaurarCupos"), Qt::LeftButton);
        esperar();
        pestana(w.get(), "Dividendos");
        esperar();
        QVERIFY(!hijo<QLineEdit>(w.get(), "valor_r1")->isEnabled());
        QCOMPARE(hijo<QLabel>(w.get(), "avisoRegla")->text(), QString());
        QTest::mouseClick(hijo<QPushButton>(w.get(), "guardarRegla"), Qt::LeftButton);
        esperar();
        QCOMPARE(foto(env->db(), {"venta_cupo_ganadores", "dividendos", "dividendos_ampliados", "grupos"}), antes);
        // The track with rows: the rule is shown, no box.
        hijo<QComboBox>(w.get(), "hipodromo")->setCurrentText("LA RINCONADA");
        QCOMPARE(env->dialogs.count(), 0);
        QVERIFY(hijo<QLineEdit>(w.get(), "valor_r1")->isEnabled());
        env->ctx.session.modoventa = 0;
    }

    // The auction tab of the centre's manager: a race without rows says so;
    // loaded, its cells are the own centre's and an edit writes only there.
    void auctionTabOfTheCentre() {
        const QString fecha = fechaSql(hoy);
        env->db().exec("DELETE FROM carreras_remate");
        auto w = abrir("Form_Geren_Ganadores", "gerente");
        pestana(w.get(), "Subasta");
        QCOMPARE(hijo<QLabel>(w.get(), "avisoSubasta")->text(), QString("LA CARRERA NO TIENE SUBASTA EN LOS PINOS"));
        std::vector<Insercion> filas;
        for (const char* ch : {"LOS PINOS", "MARACAY"})
            for (const Row& c : env->db().query("SELECT caballo, nu_caballo FROM carreras WHERE fecha = ? AND carrera = 1 "
                                                "AND id_hipodromo = 1 ORDER BY id_carrera",
                                                {fecha}))
                filas.push_back(FilaRemate{fecha, 1, c.text("caballo"), c.integer("nu_caballo"), 0, ch, 20}.insercion());
        insertarFilas(env->db(), filas);
        QTest::mouseClick(hijo<QPushButton>(w.get(), "actualizar"), Qt::LeftButton);
        auto* celdas = hijo<QTableWidget>(w.get(), "celdasSubasta");
        QCOMPARE(celdas->rowCount(), 8);
        QCOMPARE(hijo<QLabel>(w.get(), "avisoSubasta")->text(), QString("Subasta de la carrera 1 en LOS PINOS"));
        celdas->item(2, 3)->setText("120");  // tabla1 of the third horse
        QApplication::processEvents();
        QCOMPARE(numberOf(env->db(), "SELECT sum(tabla1) FROM carreras_remate WHERE ch = 'LOS PINOS'"), 120.0);
        QCOMPARE(numberOf(env->db(), "SELECT sum(tabla1) FROM carreras_remate WHERE ch = 'MARACAY'"), 0.0);
        hijo<QLineEdit>(w.get(), "ganadorSubasta")->setText("3");
        QTest::mouseClick(hijo<QPushButton>(w.get(), "cambiarGanador"), Qt::LeftButton);
        QCOMPARE(env->dialogs.last().text, QString("Los cambios se han realizado con exito"));
        QCOMPARE(numberOf(env->db(), "SELECT count(*) FROM carreras_remate WHERE win = 3"), 8.0);
        grab(w.get(), "Form_Geren_Ganadores_subasta");
    }

    void switchesCloseCommands() {
        env->db().exec("UPDATE grupos SET admincupo = 0, gerente_eliminar = 0 WHERE grupo = '12'");
        auto w = abrir("Form_Gerencia_Grupos", "gerentesub");
        QVERIFY(!hijo<QPushButton>(w.get(), "anularGerencia")->isEnabled());
        auto* p = hijo<QTabWidget>(w.get(), "pestanas");
        QVERIFY(!p->isTabEnabled(1));  // limits
        QVERIFY(p->isTabEnabled(2));   // rule
        env->db().exec("UPDATE grupos SET admincupo = 1, gerente_eliminar = 1 WHERE grupo = '12'");
    }
};

QTEST_MAIN(TstFormGerencia)
#include "tst_formgerencia.moc"
