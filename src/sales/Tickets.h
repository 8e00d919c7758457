#pragma once

#include "sales/TicketPrinter.h"

#include <QString>
#include <QVector>

namespace hipico {

// The printed pieces of the winner-bet booth, line by line, for the raw
// modes and for the graphic mode.

// Units as printed and shown: the shortest text of the number with a decimal comma ("5", "2,5").
QString textoUnidades(double ganadores);

struct DatosBoleto {
    QString centro;     // betting centre (ch)
    QString taquilla;   // booth: the user signed in
    QString fecha;      // sale date "YYYY-MM-DD"
    QString hora;       // "hh:mm:ss"
    QString codigo;     // nu_boleto
    QString hipodromo;  // racetrack name
    long long carrera = 0;
    long long caballo = 0;
    QString nombreCaballo;
    double ganadores = 0;  // units
    double costo = 0;      // units x unit value
    bool enDolares = false;
    int diasValidez = 0;   // duracionboletos
    // Company name and tax number, printed when the group's impresion_datos is on.
    bool imprimirDatos = false;
    QString empresa;
    QString rif;
};

// Told when a sold ticket does not come out of the printer.
QString noImpreso(const QString& codigo);
// The ticket of a sale.
Impreso ticketVenta(const DatosBoleto& b, bool grafico);
// A ticket printed again: "COPIA" and the time of the reprint above its
// lines, "COPIA" again below them, in every mode, so that a copy never
// passes for a second original.
Impreso copiaBoleto(const Impreso& original, const QString& fecha, const QString& hora);
inline const QString kMarcaCopia = QStringLiteral("COPIA");
// The ticket of a sale authorised with the supervisor password.
Impreso ticketClave(const DatosBoleto& b, bool grafico);

struct DatosCobro {
    QString centro;
    QString taquilla;
    QString fecha;  // payment date "YYYY-MM-DD"
    QString hora;
    QString codigo;
    double monto = 0;
    bool enDolares = false;
};
// The payment slip.
Impreso reciboCobro(const DatosCobro& c, bool grafico);

// The test page of the print settings window.
Impreso paginaPrueba(const QString& centro, const QString& taquilla, const QString& fecha, const QString& hora,
                     bool grafico);
inline const QString kSeparadorPrueba = QStringLiteral("--------------------------------");

// The booth's figures of a day (or of a range of its races).
struct TotalesDia {
    double unidadesVendidas = 0;
    double venta = 0;           // money sold
    long long cantVenta = 0;
    double cobrado = 0;         // paid (status 2 and 3)
    long long cantCobrado = 0;
    double porCobrar = 0;       // due (status 1 and 4)
    long long cantPorCobrar = 0;
    long long anulados = 0;     // voided (status 5 in the audit log)
    double saldo() const { return venta - cobrado - porCobrar; }
    double caja() const { return venta - cobrado; }
};

struct GanadorCarrera {
    long long carrera = 0;
    long long caballo = 0;
    double dividendo = 0;
    long long empate = 0;      // second winner of a dead heat (0 = none)
    double dividendo2 = 0;
};

struct DatosResumen {
    QString centro;
    QString taquilla;
    QString fecha;   // "YYYY-MM-DD"
    QString hora;
    QString carreras;  // "TODAS" or "DE LA 1 HASTA LA 4"
    TotalesDia totales;
    QVector<GanadorCarrera> ganadores;
    bool enDolares = false;
    // The game's heading (raw and graphic modes).
    QString encabezado = QStringLiteral("--- VENTA DE GANADORES ---");
    QString encabezadoGrafico = QStringLiteral("                  GANADORES ---");
};
// The printed "RESUMEN DE VENTAS".
Impreso resumenVentas(const DatosResumen& r, bool grafico);

}  // namespace hipico
