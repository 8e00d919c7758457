#pragma once

#include "core/Campo.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

namespace hipico {

class Context;

// The fields of the single `configuracion` row, in tab order.
const QVector<Campo>& camposConfiguracion();
// The group parameters that no other window edits, in tab order.
const QVector<Campo>& camposGrupo();
// Logic of the general configuration window (Form_ConfiguracionGeneral): the
// system settings, the group parameters no other window edits, and the
// purge of kept tickets and audit rows. Every field is checked before
// anything is written; a refusal names the field and changes nothing; a save
// is one statement with bound values.
class ConfiguracionGeneral {
public:
    explicit ConfiguracionGeneral(Context& ctx);

    // The settings row as the window shows it (nullopt: the read failed and was reported).
    std::optional<ValoresCampos> cargar();
    // Checks every field, then writes them all; the session's copy of the
    // settings follows. Returns whether it was saved.
    bool guardar(const ValoresCampos& valores);

    // The groups to choose from, and the centres to copy to.
    QStringList grupos();
    QStringList centros();
    std::optional<ValoresCampos> cargarGrupo(const QString& grupo);
    // Saves the parameters for one group, or (copiarAlCentro) for every
    // group of that group's centre.
    bool guardarGrupo(const QString& grupo, const ValoresCampos& valores, bool copiarAlCentro);

    // Removes kept tickets (ventas_ganadores, ventas_tf, ventas_mc) and audit
    // rows (bitacora, bitacora_tf) dated before the day ("DD-MM-YYYY"), after
    // the user confirms; tells how many rows went. Returns that count (nullopt
    // when refused, declined or failed).
    std::optional<long long> depurar(const QString& antesDe);

private:
    bool escribir(const QString& tabla, const QVector<Campo>& campos, const ValoresCampos& valores,
                  const QString& donde, const Params& parametrosDonde);
    Context& ctx_;
};

inline const QString kTituloConfiguracion = QStringLiteral("CONFIGURACION GENERAL");
inline const QString kOpcionesNoAut3t[] = {QStringLiteral("EN 2 TABLAS SOLO LA PEQUEÑA"),
                                           QStringLiteral("EN 2 TABLAS SOLO LA GRANDE"),
                                           QStringLiteral("EN 4 DUPLICAR 2,4")};

}  // namespace hipico
