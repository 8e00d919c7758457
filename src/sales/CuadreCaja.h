#pragma once

#include "sales/Tickets.h"

#include <QString>
#include <QStringList>

namespace hipico {

class Context;

// The booth's cash-up: the tickets and money of the booth since its last
// cash-up of the working day, and the cash-up itself (the cash counted in
// the drawer beside what was expected there). Each cash-up keeps the booth's
// figures of the day at that moment (table cuadres_caja), so what happened
// since is the difference: a void of an earlier ticket gives its money back
// in the stretch it happens in, as the drawer does. Database failures go to
// the caller.

// The booth's stretch since its last cash-up (or since the day began).
struct TramoCaja {
    QString desde;  // time of the last cash-up; "" from the start of the day
    long long boletos = 0;
    double venta = 0;
    double pagado = 0;
    long long anulados = 0;
    // The cash that should be in the drawer: sold minus paid.
    double esperado() const { return venta - pagado; }
};
TramoCaja desdeUltimoCuadre(Context& ctx);

struct CuadreCaja {
    TramoCaja tramo;
    QString hasta;  // time of this cash-up
    double contado = 0;
    double diferencia() const { return contado - tramo.esperado(); }
};
// Records a cash-up of the booth's user with the cash counted.
CuadreCaja registrarCuadre(Context& ctx, double contado);

// The cash-up as printed, after the day's summary.
QStringList lineasCuadre(const CuadreCaja& c, const QString& taquilla, bool enDolares);

inline const QString kTituloCuadreCaja = QStringLiteral("CUADRE DE CAJA");

}  // namespace hipico
