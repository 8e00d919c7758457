#pragma once

#include <QString>
#include <QStringList>

namespace hipico {

// The user levels, as usuarios.nivel holds them (compared exactly, case included).
namespace nivel {
inline const QString Administrador = QStringLiteral("Administrador");
inline const QString AdministradorOculto = QStringLiteral("Administrador Oculto");
inline const QString Socio = QStringLiteral("Socio");
inline const QString Gerente = QStringLiteral("Gerente");
inline const QString Supervisor = QStringLiteral("Supervisor");
inline const QString SupervisorTF = QStringLiteral("SupervisorTF");
inline const QString AdminTF = QStringLiteral("AdminTF");
inline const QString Remate = QStringLiteral("Remate");
inline const QString TablaFija = QStringLiteral("TablaFija");
inline const QString Total = QStringLiteral("Total");
inline const QString Taquilla = QStringLiteral("Taquilla");
inline const QString Taquilla2 = QStringLiteral("Taquilla2");
}  // namespace nivel

// Every level, in the order the menu's load compares them.
const QStringList& todosLosNiveles();

// Booth levels: they sell, and the closed-race check and the void switch apply to them.
bool esNivelTaquilla(const QString& nivel);
// "Administrador" and "Administrador Oculto".
bool esAdministrador(const QString& nivel);
// The levels bound to no subgroup: "Administrador", "Administrador Oculto" and "Socio".
bool esNivelDireccion(const QString& nivel);
// Supervisors and managers of a group: "Supervisor" and "Gerente".
bool esNivelSupervision(const QString& nivel);

}  // namespace hipico
