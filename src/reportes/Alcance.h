#pragma once

#include "core/SqlValue.h"

#include <QString>
#include <QVector>
#include <string>

namespace hipico {

class Context;
struct Session;

// What a report covers: every group the user may see ("TODOS"), one group,
// or one subgroup (by its name).
struct Alcance {
    enum class Tipo { Todos, Grupo, Subgrupo };
    Tipo tipo = Tipo::Todos;
    QString valor;  // the group's code or the subgroup's name

    static Alcance todos() { return {}; }
    static Alcance grupo(const QString& g) { return {Tipo::Grupo, g}; }
    static Alcance subgrupo(const QString& s) { return {Tipo::Subgrupo, s}; }
    // As the choice lists and the reports show it: "TODOS", "07", "SUBGRUPO ORIENTE".
    QString texto() const;
    bool operator==(const Alcance& o) const { return tipo == o.tipo && valor == o.valor; }
};

// The choices a user's level has. The administrator levels, "Socio" and
// "AdminTF" see the whole network: "TODOS", every group and (where the window
// offers them) every subgroup. "Supervisor", "Gerente" and "SupervisorTF" see
// their centre: "TODOS" (the centre's groups) and each group of the centre.
// Every other level sees its own group only. A database failure goes to the caller.
QVector<Alcance> alcancesPermitidos(Context& ctx, bool conGrupos, bool conSubgrupos);

// The levels whose "TODOS" is the groups of their own centre.
bool alcanceDeCentro(const QString& nivel);

// The condition a scope puts on a statement's group column, with its values:
// " and t.grupo = ?", or a subgroup's or the centre's groups.
struct CondicionSql {
    std::string sql;
    Params params;
};
CondicionSql condicionAlcance(const Session& s, const Alcance& a, const char* columnaGrupo);

}  // namespace hipico
