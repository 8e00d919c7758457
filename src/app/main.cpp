#include "core/Clock.h"
#include "core/Config.h"
#include "core/Connections.h"
#include "core/Context.h"
#include "core/Dialogs.h"
#include "core/Version.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>

using namespace hipico;

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("hipico");
    QApplication::setApplicationVersion(kVersionTexto);
    const QString archivo = Config::locate(app.arguments());
    const Config config = archivo.isEmpty() ? Config() : Config::load(archivo);
    SystemClock clock;
    QtDialogs dialogs;
    Context ctx(config, dialogs, clock);

    QMainWindow ventana;
    ventana.setWindowTitle("MENU PRINCIPAL - ");
    auto* texto = new QLabel(&ventana);
    texto->setAlignment(Qt::AlignCenter);
    ventana.setCentralWidget(texto);
    ventana.resize(900, 600);
    ventana.show();
    if (ConectarServidor(ctx)) texto->setText("Conectado al servidor central. " + kVersionEtiqueta);
    return app.exec();
}
