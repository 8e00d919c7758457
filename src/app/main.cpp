#include "app/Ventanas.h"
#include "core/Clock.h"
#include "core/Config.h"
#include "core/Context.h"
#include "core/Version.h"
#include "core/WindowRegistry.h"
#include "gui/Estilo.h"
#include "gui/QtDialogs.h"
#include "signin/Form_MenuPrincipal.h"
#include "signin/frmLogin.h"

#include <QApplication>
#include <memory>

using namespace hipico;

// The program: the sign-in window, then the main menu, which stays open for
// the whole run and opens every other window.
int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("hipico");
    QApplication::setApplicationVersion(kVersionTexto);
    aplicarEstilo();
    cargarTraducciones();
    const QString archivo = Config::locate(app.arguments());
    const Config config = archivo.isEmpty() ? Config() : Config::load(archivo);
    SystemClock clock;
    QtDialogs dialogs;
    Context ctx(config, dialogs, clock);

    WindowRegistry ventanas;
    registrarVentanas(ventanas);

    std::unique_ptr<Form_MenuPrincipal> menu;
    frmLogin login(ctx);
    login.alAceptar = [&] {
        menu = std::make_unique<Form_MenuPrincipal>(ctx, ventanas);
        menu->showMaximized();
        menu->cargar();
    };
    login.show();
    return app.exec();
}
