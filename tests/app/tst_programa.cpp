// The whole program as a user meets it: every demo user signs in, gets the
// menu of its level built from the real window registry, and every entry the
// menu shows opens its window inside the menu.
#include "app/Ventanas.h"
#include "core/WindowRegistry.h"
#include "schema/Demo.h"
#include "signin/Form_MenuPrincipal.h"
#include "support/TestEnv.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QtTest>

using namespace hipico;
using namespace hipico::test;

class TstPrograma : public QObject {
    Q_OBJECT
    std::unique_ptr<TestEnv> env;
    WindowRegistry registro;

private slots:
    void initTestCase() {
        env = std::make_unique<TestEnv>("programa", true);
        env->loadDemo();
        registrarVentanas(registro);
    }

    void everyVisibleEntryOpensItsWindow_data() {
        QTest::addColumn<QString>("usuario");
        for (const DemoUsuario& u : usuariosDemo()) QTest::newRow(qPrintable(u.usuario)) << u.usuario;
    }

    void everyVisibleEntryOpensItsWindow() {
        QFETCH(QString, usuario);
        env->signIn(usuario);
        env->dialogs.clear();
        Form_MenuPrincipal menu(env->ctx, registro);
        menu.terminar = [] {};
        QVERIFY(menu.cargar());
        menu.show();
        int abiertas = 0;
        for (const QString& entrada : registro.entries()) {
            QAction* a = menu.accion(entrada);
            if (!a || !a->isVisible() || !a->isEnabled()) continue;
            const int antes = env->dialogs.count();
            menu.activar(entrada);
            QApplication::processEvents();
            // Either the window opened, or the entry's own level check refused it.
            const bool refused = env->dialogs.count() > antes &&
                                 env->dialogs.last().text == " Usted no posee acceso a esta parte del sistema";
            QVERIFY2(refused || menu.area()->activeSubWindow(), qPrintable(entrada));
            if (!refused) ++abiertas;
        }
        if (usuario == "admin" || usuario == "taquilla1") QVERIFY(abiertas > 0);
        if (usuario == "admin") {
            menu.activar("vg_menu");
            QApplication::processEvents();
            grab(&menu, "programa_admin_venta");
        }
        for (QMdiSubWindow* w : menu.area()->subWindowList()) w->close();
    }

    void boothSeesItsSaleWindow() {
        env->signIn("taquilla1");
        Form_MenuPrincipal menu(env->ctx, registro);
        menu.terminar = [] {};
        QVERIFY(menu.cargar());
        QVERIFY(menu.accion("vg_menu") && menu.accion("vg_menu")->isVisible());
        QVERIFY(!menu.accion("cg_menu") || !menu.accion("cg_menu")->isVisible());
        QVERIFY(!menu.accion("carreras_menu") || !menu.accion("carreras_menu")->isVisible());
    }
};

QTEST_MAIN(TstPrograma)
#include "tst_programa.moc"
