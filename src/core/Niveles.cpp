#include "core/Niveles.h"

namespace hipico {

const QStringList& todosLosNiveles() {
    static const QStringList niveles{nivel::Taquilla,     nivel::Taquilla2,     nivel::Gerente, nivel::Remate,
                                     nivel::TablaFija,    nivel::Total,         nivel::Supervisor,
                                     nivel::SupervisorTF, nivel::AdminTF,       nivel::AdministradorOculto,
                                     nivel::Administrador, nivel::Socio};
    return niveles;
}

bool esNivelTaquilla(const QString& n) { return n == nivel::Taquilla || n == nivel::Taquilla2 || n == nivel::Total; }

bool esAdministrador(const QString& n) { return n == nivel::Administrador || n == nivel::AdministradorOculto; }

bool esNivelDireccion(const QString& n) { return esAdministrador(n) || n == nivel::Socio; }

bool esNivelSupervision(const QString& n) { return n == nivel::Supervisor || n == nivel::Gerente; }

}  // namespace hipico
