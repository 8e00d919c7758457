#include "signin/CambiarGrupo.h"

#include "core/Context.h"
#include "signin/MenuEntradas.h"

namespace hipico {

CambiarGrupo::CambiarGrupo(Context& ctx) : ctx_(ctx) {}

Recordset CambiarGrupo::grupos() {
    const Session& s = ctx_.session;
    Db& db = ctx_.servidor();
    if (s.nivel == nivel::Socio)
        return db.query("select grupo, ch, subgrupo from grupos where ganadores <> 0 and subgrupo = ? "
                        "order by ch, grupo",
                        {s.subgrupo});
    if (s.nivel == nivel::Administrador || s.nivel == nivel::AdministradorOculto)
        return db.query("select grupo, ch, subgrupo from grupos where ganadores <> 0 order by ch, grupo");
    return db.query("select grupo, ch, subgrupo from grupos where ganadores <> 0 and ch = ? order by ch, grupo",
                    {s.ch});
}

bool CambiarGrupo::cambiar(const QString& grupo) {
    try {
        if (grupo.isEmpty() || grupos().find("grupo", grupo) < 0) {
            ctx_.dialogs.refuse(kTituloAcciones, kGrupoNoPermitido);
            return false;
        }
        const Recordset fila = ctx_.servidor().query("select * from grupos where grupo = ?", {grupo});
        if (fila.empty()) {
            ctx_.dialogs.refuse(kTituloAcciones, kGrupoNoPermitido);
            return false;
        }
        cambiarGrupo(ctx_.session, fila.first());
    } catch (const DbError& e) {
        ctx_.dialogs.refuse(kTituloAcciones, e.text());
        return false;
    }
    ctx_.dialogs.inform(kTituloAcciones, kGrupoCambiado);
    return true;
}

}  // namespace hipico
