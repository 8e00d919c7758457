#include "signin/CambiarGrupo.h"

#include "core/Context.h"
#include "core/Niveles.h"

namespace hipico {

CambiarGrupo::CambiarGrupo(Context& ctx) : ctx_(ctx) {}

Recordset CambiarGrupo::grupos() {
    const Session& s = ctx_.session;
    Db& db = ctx_.servidor();
    if (s.nivel == nivel::Socio)
        return db.query("select grupo, ch, subgrupo from grupos where ganadores <> 0 and subgrupo = ? "
                        "order by ch, grupo",
                        {s.subgrupo});
    if (esAdministrador(s.nivel))
        return db.query("select grupo, ch, subgrupo from grupos where ganadores <> 0 order by ch, grupo");
    return db.query("select grupo, ch, subgrupo from grupos where ganadores <> 0 and ch = ? order by ch, grupo",
                    {s.ch});
}

bool CambiarGrupo::cambiar(const QString& grupo) {
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
    ctx_.dialogs.inform(kTituloAcciones, kGrupoCambiado);
    return true;
}

}  // namespace hipico
