#pragma once

#include "core/Recordset.h"
#include "reportes/Reporte.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace hipico {

class Context;

// The fixed-table manager's window logic (Form_GerenciaTF): the game of the
// manager's group on a day. Its status sets are its own and kept so: paid is
// "(estatus=2 or estatus=4)", still to pay "(estatus=1 or estatus=3 or
// estatus=6)" (the booth counts 2 and 3 as paid). Database failures go
// through the error guard.
class GerenciaTablaFija {
public:
    explicit GerenciaTablaFija(Context& ctx) : ctx_(ctx) {}

    static const QString kPagados;  // "(estatus=2 or estatus=4)"
    static const QString kPorPagar;  // "(estatus=1 or estatus=3 or estatus=6)"

    // Sales per horse of a race: the horse's line, " R  E  T  I  R  A  D  O "
    // for a scratched one, the tables and money of the group (or of a centre).
    struct Caballo {
        long long numero = 0;
        QString texto;
        double tablas = 0, venta = 0;
    };
    QVector<Caballo> ventas(const QString& fecha, long long carrera, const QString& centro = {});
    bool cerrada(const QString& fecha, long long carrera);

    // The day's totals of the group: sold, and "Monto Cobrado" over statuses 1, 2, 3, 4, 6.
    struct Totales {
        double venta = 0, cobrado = 0;
    };
    std::optional<Totales> totales(const QString& fecha);

    // The booth message of the group; empty clears it ("Mensaje Borrado").
    bool mensaje(const QString& texto);

    // Ticket search: "COBRADOS", "POR PAGAR", "RET. POR PAGAR", "RET. PAGADO", "TODAS".
    static const QStringList& clases();
    struct Filtro {
        QString fecha;
        QString centro;          // "" every centre of the group
        long long desde = 0, hasta = 0;  // race range, 0 0 every race
        QString clase = QStringLiteral("TODAS");
        QString caballo;         // "" every horse
        bool historico = false;  // the kept copy ventas_tf
    };
    struct Busqueda {
        Recordset filas;
        double sumamonto = 0, sumacobrado = 0, sumaporcobrar = 0;
    };
    std::optional<Busqueda> buscar(const Filtro& f);
    // The search into rpt_jugadas, and the ticket report's parameters.
    std::optional<ParametrosReporte> reporte(const Filtro& f);

private:
    Context& ctx_;
};

}  // namespace hipico
