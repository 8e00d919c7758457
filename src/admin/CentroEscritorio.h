#pragma once

#include "admin/Escritorio.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <optional>

namespace hipico {

// The desk's tabs of the selected centre: its sale limits per horse and its
// dividend rule.

// The centre's limits cab1..cab16 (venta_cupo_ganadores).
class CuposCentro : public ComandoEscritorio {
public:
    explicit CuposCentro(Context& ctx) : ComandoEscritorio(ctx) {}
    std::optional<Row> leer(const Seleccion& s);
    // One edited limit, saved alone.
    bool guardarCupo(const Seleccion& s, int caballo, const QString& valor);
    // All sixteen, checked first, saved together.
    bool guardarCupos(const Seleccion& s, const QStringList& valores);
};

// The centre's dividend rule: its first group's row (with the per-track
// option, the centre's `dividendos` row for the track), and the extended
// runner-count fields.
class ReglaCentro : public ComandoEscritorio {
public:
    explicit ReglaCentro(Context& ctx) : ComandoEscritorio(ctx) {}
    QMap<QString, QString> leer(const Seleccion& s);
    // Every field is checked before anything is written.
    bool guardar(const Seleccion& s, const QMap<QString, QString>& campos);
};

}  // namespace hipico
