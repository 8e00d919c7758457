#pragma once

#include "admin/Escritorio.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace hipico {

// The manager's own functions beside the desk's commands: the group's
// switches, sales per booth, the booth message and the fixed-table
// supervisor (the auction percentages are the auction panel's). The group is always the signed-in user's; the
// rest of the scope comes with the selection.

// The group switches read when a manager's window opens; each opens a command.
struct SwitchesGerencia {
    bool admincupo = false;             // sale limits
    bool admindiv = false;              // dividend rule
    bool gerenteEliminar = false;       // voids
    bool visualBoletos = false;         // ticket listing
    bool pedirMotivo = false;           // a reason is asked on voiding
    bool permitirAnularTF = false;
    int opcionCupoWin = 0;
    bool noSumarRet = false;            // sales per horse without the status term
    QString nuAdministrador;
    QString nuTecnico;
    double empateMin = 0;
    QString subgrupo;
};

class GerenciaGrupo : public ComandoEscritorio {
public:
    explicit GerenciaGrupo(Context& ctx) : ComandoEscritorio(ctx) {}

    SwitchesGerencia switches();

    // Sales per booth of the races from the selection's race to `hasta`
    // (every race with `todas`), with each booth's paid and due money.
    struct VentaTaquilla {
        QString taquilla;
        double venta = 0;
        double cobrado = 0;
        double porPagar = 0;
    };
    struct VentasTaquillas {
        QVector<VentaTaquilla> filas;
        VentaTaquilla total;
    };
    VentasTaquillas ventasPorTaquilla(const Seleccion& s, long long hasta, bool todas);
    QStringList lineasTaquillas(const VentasTaquillas& v) const;  // closes with the rule and "Total:"

    // The message the group's booths show.
    QString mensaje();
    bool guardarMensaje(const QString& texto);
    bool borrarMensaje();  // "Mensaje Borrado"

    // The fixed-table supervisor: "TODOS" then the group's users of the
    // booth and fixed-table levels; the choice is the group's supervisorTF.
    QStringList supervisoresTF();
    QString supervisorTF();
    bool guardarSupervisorTF(const QString& usuario);

private:
    // One value of the own group's row.
    QString delGrupo(const char* sql);
    bool escribirMensaje(const QString& texto, const QString& aviso);
};

}  // namespace hipico
