#include "races/Hipodromos.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "core/Openers.h"

#include <limits>

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
    if (texto.trimmed().isEmpty()) return 0;
    const std::optional<long long> n = leerEntero(texto, std::numeric_limits<int>::max());
    if (!n) return std::nullopt;
    return static_cast<int>(*n);
}

}  // namespace hipico
