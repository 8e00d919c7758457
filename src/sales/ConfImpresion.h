#pragma once

#include "core/Session.h"

#include <QString>
#include <QStringList>

namespace hipico {

class Context;

// Logic of the print settings window (Form_ConfImpresion): the printer mode
// or port, whether this machine prints tickets ("SI"/"NO"), the font size of
// the graphic mode and the barcode; Save, and a test page in the mode chosen.
class ConfImpresion {
public:
    explicit ConfImpresion(Context& ctx) : ctx_(ctx) {}

    // The modes offered in the list (any other port may be typed).
    static QStringList modos();
    // The settings in force on this machine.
    ConfLocal cargar();

    struct Valores {
        QString puerto;
        bool imprimir = true;  // "SI"
        int tamLetra = 8;
        bool codigoBarras = true;
        bool operator==(const Valores&) const = default;
    };
    // What a port too long is told, as it is typed and when it is saved ("" for a port that fits).
    static QString avisoPuerto(const QString& puerto);
    // Checks and saves; "Los cambios se han realizado con exito".
    bool guardar(const Valores& v);
    // Prints the test page with these values (saved or not).
    bool imprimirPrueba(const Valores& v);

private:
    bool validar(const Valores& v);
    Context& ctx_;
};

inline const QString kTituloConfImpresion = QStringLiteral("Configuración de Impresión");
inline const QString kSalirSinGuardar = QStringLiteral("HAY CAMBIOS SIN GUARDAR. ¿DESEA SALIR SIN GUARDARLOS?");

}  // namespace hipico
