#pragma once

#include <QDate>
#include <QString>
#include <QVector>

namespace hipico {

class Db;

struct DemoUsuario {
    QString usuario;
    QString clave;
    QString nombre;
    QString nivel;
    QString grupo;
};

// The demo's users, one of every level, with their plain passwords.
const QVector<DemoUsuario>& usuariosDemo();

// Fills an empty central schema with a demo day: the settings row, two
// tracks with eight races each (one race left with four runners), two
// betting centres with two groups each, their rules and limits, users of
// every level, clients and the day's total rows.
void cargarDemo(Db& central, const QDate& hoy);
// The betting centres of the demo, and tomorrow's race card, on the
// betting-centre server.
void cargarDemoHipicos(Db& hipicos, const QDate& hoy);

}  // namespace hipico
