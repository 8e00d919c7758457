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
    // The manager's block (every limit of horses 1 to 14 to 0) and restore
    // (the centre's `cupo` for the track into them); 15 and 16 keep theirs.
    bool bloquear(const Seleccion& s);
    bool restaurar(const Seleccion& s);

private:
    // Writes one value into the limits of horses 1 to 14, one statement each.
    void escribirCatorce(const Seleccion& s, double valor);
};

// A track without the centre's rule row.
inline const QString kSinRegistrosDividendos =
    QStringLiteral("El Hipodromo seleccionado no presenta registros de dividendos");
inline const QString kTituloSinRegistrosDividendos = QStringLiteral("Verifique e intente nuevamente");

// The centre's dividend rule: its first group's row (with the per-track
// option, the centre's `dividendos` row for the track), and the extended
// runner-count fields. With the per-track option a track without the
// centre's rule row is a new rule to the administrator (saving creates the
// row); a manager's window has nothing to edit there: reading it gives no
// rule (and, when `avisar`, the refusal "El Hipodromo seleccionado no
// presenta registros de dividendos"), saving is refused with it.
class ReglaCentro : public ComandoEscritorio {
public:
    explicit ReglaCentro(Context& ctx) : ComandoEscritorio(ctx) {}
    QMap<QString, QString> leer(const Seleccion& s, bool avisar = false);
    // Every field is checked before anything is written.
    bool guardar(const Seleccion& s, const QMap<QString, QString>& campos);

private:
    // A manager's track without the centre's rule row: refused (told when avisar).
    bool sinRegla(const Seleccion& s, long long idHipodromo, bool avisar);
};

}  // namespace hipico
