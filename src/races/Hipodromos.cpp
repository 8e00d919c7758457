#include "races/Hipodromos.h"

#include "core/Context.h"
#include "core/Openers.h"

namespace hipico {

QStringList nombresHipodromos(Context& ctx, bool soloActivos) {
    AbrirHipodromos(ctx);
    QStringList nombres;
    for (const Row& r : ctx.rs(QStringLiteral("rsHipodromos")))
        if (!soloActivos || r.integer(QStringLiteral("estatus")) == 1) nombres << r.text(QStringLiteral("hipodromo"));
    return nombres;
}

std::optional<int> idHipodromo(Context& ctx, const QString& nombre) {
    AbrirHipodromos(ctx);
    const Recordset& rs = ctx.rs(QStringLiteral("rsHipodromos"));
    const int i = rs.find(QStringLiteral("hipodromo"), nombre);
    if (i < 0) return std::nullopt;
    return rs[i].toInt(QStringLiteral("id_hipodromo"));
}

std::optional<int> numeroCaja(const QString& texto) {
    const QString t = texto.trimmed();
    if (t.isEmpty()) return 0;
    bool ok = false;
    const int n = t.toInt(&ok);
    if (!ok || n < 0) return std::nullopt;
    return n;
}

bool ejecutarAccion(Context& ctx, const std::function<void()>& accion) {
    try {
        accion();
        return true;
    } catch (const DbError& e) {
        ctx.dialogs.refuse(QStringLiteral("ERROR DE BASE DE DATOS"),
                           QStringLiteral("NO SE PUDO COMPLETAR LA OPERACION: ") + e.text());
        return false;
    }
}

}  // namespace hipico
