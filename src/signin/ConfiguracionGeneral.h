#pragma once

#include "core/Recordset.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

namespace hipico {

class Context;

// One editable field of a settings row: the column it writes, how the window
// labels it and where it shows it, and what a valid value is.
struct CampoAjuste {
    enum class Tipo { Entero, Decimal, Texto, Fecha, Interruptor, Opcion };
    QString columna;
    QString etiqueta;      // shown beside the field and named in its refusal
    QString pestana;       // the tab that holds it
    Tipo tipo = Tipo::Texto;
    double minimo = 0;     // numbers: the smallest value
    double maximo = 0;     // numbers: the largest value
    int largo = 0;         // texts: the most characters (the column's width)
    QStringList opciones;  // Opcion: the choices, stored as their index
};

// The fields of the single `configuracion` row, in tab order.
const QVector<CampoAjuste>& camposConfiguracion();
// The group parameters that no other window edits, in tab order.
const QVector<CampoAjuste>& camposGrupo();
// The tabs of a field list, in the order their first field appears.
QStringList pestanas(const QVector<CampoAjuste>& campos);

// The values as the window shows them: column -> text ("YYYY-MM-DD" dates as
// "DD-MM-YYYY", decimals with a comma, switches as "1"/"0", choices as their index).
using ValoresAjuste = QMap<QString, QString>;
ValoresAjuste valoresDe(const Row& fila, const QVector<CampoAjuste>& campos);

// Checks one value typed for a field; returns the refusal ("" when valid) and
// puts the value to bind into `valor`.
QString validarCampo(const CampoAjuste& campo, const QString& texto, SqlValue& valor);

// Logic of the general configuration window (Form_ConfiguracionGeneral): the
// system settings, the group parameters no other window edits, and the
// purge of kept tickets and audit rows. Every field is checked before
// anything is written; a refusal names the field and changes nothing; a save
// is one statement with bound values.
class ConfiguracionGeneral {
public:
    explicit ConfiguracionGeneral(Context& ctx);

    // The settings row as the window shows it (nullopt: the read failed and was reported).
    std::optional<ValoresAjuste> cargar();
    // Checks every field, then writes them all; the session's copy of the
    // settings follows. Returns whether it was saved.
    bool guardar(const ValoresAjuste& valores);

    // The groups to choose from, and the centres to copy to.
    QStringList grupos();
    QStringList centros();
    std::optional<ValoresAjuste> cargarGrupo(const QString& grupo);
    // Saves the parameters for one group, or (copiarAlCentro) for every
    // group of that group's centre.
    bool guardarGrupo(const QString& grupo, const ValoresAjuste& valores, bool copiarAlCentro);

    // Removes kept tickets (ventas_ganadores, ventas_tf, ventas_mc) and audit
    // rows (bitacora, bitacora_tf) dated before the day ("DD-MM-YYYY"), after
    // the user confirms; tells how many rows went. Returns that count (nullopt
    // when refused, declined or failed).
    std::optional<long long> depurar(const QString& antesDe);

private:
    bool escribir(const QString& tabla, const QVector<CampoAjuste>& campos, const ValoresAjuste& valores,
                  const QString& donde, const Params& parametrosDonde);
    Context& ctx_;
};

inline const QString kTituloConfiguracion = QStringLiteral("CONFIGURACION GENERAL");
inline const QString kOpcionesNoAut3t[] = {QStringLiteral("EN 2 TABLAS SOLO LA PEQUEÑA"),
                                           QStringLiteral("EN 2 TABLAS SOLO LA GRANDE"),
                                           QStringLiteral("EN 4 DUPLICAR 2,4")};

}  // namespace hipico
