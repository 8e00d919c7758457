#include "reportes/Alcance.h"

#include "core/Context.h"
#include "core/Niveles.h"

namespace hipico {

QString Alcance::texto() const {
    switch (tipo) {
    case Tipo::Todos:
        return QStringLiteral("TODOS");
    case Tipo::Grupo:
        return valor;
    case Tipo::Subgrupo:
        return QStringLiteral("SUBGRUPO ") + valor;
    }
    return {};
}

bool alcanceDeCentro(const QString& nivel) { return esNivelSupervision(nivel) || nivel == nivel::SupervisorTF; }

QVector<Alcance> alcancesPermitidos(Context& ctx, bool conGrupos, bool conSubgrupos) {
    const Session& s = ctx.session;
    const bool red = esNivelDireccion(s.nivel) || s.nivel == nivel::AdminTF;
    if (!red && !alcanceDeCentro(s.nivel)) return {Alcance::grupo(s.grupo)};
    QVector<Alcance> out{Alcance::todos()};
    Db& db = ctx.servidor();
    if (conGrupos) {
        const Recordset grupos = red ? db.query("SELECT grupo FROM grupos ORDER BY grupo")
                                     : db.query("SELECT grupo FROM grupos WHERE ch = ? ORDER BY grupo", {s.ch});
        for (const Row& r : grupos) out << Alcance::grupo(r.text("grupo"));
    }
    if (conSubgrupos && red)
        for (const Row& r : db.query("SELECT DISTINCT nombre FROM subgrupos ORDER BY nombre"))
            out << Alcance::subgrupo(r.text("nombre"));
    return out;
}

CondicionSql condicionAlcance(const Session& s, const Alcance& a, const char* columna) {
    const std::string c = columna;
    switch (a.tipo) {
    case Alcance::Tipo::Grupo:
        return {" and " + c + " = ?", {a.valor}};
    case Alcance::Tipo::Subgrupo:
        return {" and " + c + " IN (SELECT gs.grupo FROM grupos gs, subgrupos ss WHERE gs.subgrupo = ss.subgrupo AND ss.nombre = ?)",
                {a.valor}};
    case Alcance::Tipo::Todos:
        if (alcanceDeCentro(s.nivel)) return {" and " + c + " IN (SELECT gc.grupo FROM grupos gc WHERE gc.ch = ?)", {s.ch}};
        return {};
    }
    return {};
}

}  // namespace hipico
