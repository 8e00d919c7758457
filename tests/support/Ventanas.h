#pragma once

// What the window tests share: the program's own window list, the main menu
// of a signed-in demo user with the windows opened inside it, and keys sent
// where the cursor is.
#include "app/Ventanas.h"
#include "core/WindowRegistry.h"
#include "signin/Form_MenuPrincipal.h"
#include "support/TestEnv.h"

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QtTest>
#include <memory>

namespace hipico::test {

// The widget with the cursor, else the window itself.
inline QWidget* conCursor(QWidget* ventana) {
    QWidget* foco = QApplication::focusWidget();
    return foco ? foco : ventana;
}

// A key pressed where the cursor is.
inline void pulsar(QWidget* ventana, Qt::Key tecla, Qt::KeyboardModifiers mods = Qt::NoModifier) {
    QTest::keyClick(conCursor(ventana), tecla, mods);
}

// The visible window of type T that opened last on its own (report windows
// do), and closing every such window.
template <class T>
T* ultimaVentana() {
    T* ultima = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* v = qobject_cast<T*>(w); v && v->isVisible()) ultima = v;
    return ultima;
}
template <class T>
void cerrarVentanas() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (qobject_cast<T*>(w)) delete w;
}

// The main menu as a demo user meets it after signing in: shown at the
// given size, loaded, every window of the program registered.
struct MenuDePrueba {
    MenuDePrueba(TestEnv& env, const QString& usuario, const QSize& tamano = {1366, 768}) {
        env.signIn(usuario);
        registrarVentanas(registro);
        menu = std::make_unique<Form_MenuPrincipal>(env.ctx, registro);
        menu->terminar = [this] { ++terminado; };
        menu->resize(tamano);
        menu->show();
        QApplication::setActiveWindow(menu.get());
        menu->cargar();
        env.dialogs.clear();  // the administrator's notice of the demo day
    }

    // Opens the window of a menu entry inside the menu, as a click on it does.
    QWidget* abrir(const QString& entrada) {
        QWidget* ventana = menu->abrirVentana(entrada);
        QApplication::processEvents();
        return ventana;
    }
    int abiertas() const { return static_cast<int>(menu->area()->subWindowList().size()); }

    WindowRegistry registro;
    std::unique_ptr<Form_MenuPrincipal> menu;
    int terminado = 0;
};

}  // namespace hipico::test
