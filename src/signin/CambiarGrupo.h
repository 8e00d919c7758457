#pragma once

#include "core/Recordset.h"

#include <QString>

namespace hipico {

class Context;

// Group change: switches the session to another group without signing in
// again. Nothing is written to the database; the session's group values are
// replaced by the chosen group's row.
class CambiarGrupo {
public:
    explicit CambiarGrupo(Context& ctx);

    // The groups the session may switch to (columns grupo, ch, subgrupo), by
    // level: "Socio" the groups of the session's subgroup that sell winner
    // bets; the administrator levels every group that sells winner bets; any
    // other level the groups of the session's centre that sell winner bets.
    Recordset grupos();

    // Switches to the group (one of grupos()); tells the user and returns
    // whether it switched. A database failure is left to the window's guard.
    bool cambiar(const QString& grupo);

private:
    Context& ctx_;
};

inline const QString kTituloAcciones = QStringLiteral("ACCIONES");
inline const QString kGrupoCambiado = QStringLiteral("GRUPO CAMBIADO CON EXITO");
inline const QString kGrupoNoPermitido = QStringLiteral("DEBE ELEGIR UN GRUPO DE LA LISTA");

}  // namespace hipico
