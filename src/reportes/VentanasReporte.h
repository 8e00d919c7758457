#pragma once

#include "reportes/Alcance.h"
#include "reportes/Llenados.h"
#include "reportes/Reporte.h"

#include <QDate>
#include <QString>
#include <QVector>
#include <functional>
#include <optional>

namespace hipico {

class Context;

// A report window is a description run by one pattern: what it asks (one
// day or a date range, a race range, a scope of groups and/or subgroups, an
// option), the local report table it refills and how, and the kind of report
// it opens (with its parameters).
struct DescripcionReporte {
    QString nombre;         // the window's name ("Form_RVC_WIN")
    QString entrada;        // its main-menu entry ("gd_menu")
    QString titulo;         // its caption
    bool rango = false;     // a date range, else one day
    bool carreras = false;  // a race range (both bounds)
    bool grupos = true;     // offers "TODOS" and groups
    bool subgrupos = false; // offers subgroups
    QString opcion;         // caption of the window's option box ("" : none)
    bool exportaTexto = false;  // the general reports' text file
    const char* tabla = "";
    std::function<Recordset(Context&, const Consulta&)> llenar;
    std::function<int(const Consulta&)> tipo;
    std::function<std::optional<ParametrosReporte>(const Consulta&)> parametros;
};

// Every report window of the program.
const QVector<DescripcionReporte>& ventanasReporte();
const DescripcionReporte* ventanaReporte(const QString& nombre);

// What the user chose in a report window.
struct Peticion {
    QDate desde, hasta;              // hasta is ignored by a one-day window
    QString carreraDesde, carreraHasta;
    Alcance alcance;
    bool opcion = false;
};

// The texts of the report windows.
inline const QString kTituloVerificacion = QStringLiteral("VERFICACION DE DATOS");
inline const QString kRangoCarreras = QStringLiteral("DEBE INGRESAR EL RANGO DE LAS CARRRERAS");
inline const QString kFechasInvertidas = QStringLiteral("LA FECHA INICIAL NO PUEDE SER MAYOR QUE LA FECHA FINAL");
inline const QString kSinFechas = QStringLiteral("DEBE INGRESAR LAS FECHAS DEL REPORTE");
inline const QString kSubgrupoNoValido = QStringLiteral("DEBE SELECCIONAR UN SUBGRUPO");
inline const QString kFiltroTexto = QStringLiteral("Archivos de texto Txt|*.txt");

// The pattern every report window runs. Refusals and "nothing found" reach
// the user through the context's dialogs; a database failure goes to the
// caller (the window's guard).
class GeneradorReporte {
public:
    GeneradorReporte(Context& ctx, const DescripcionReporte& d) : ctx_(ctx), d_(d) {}

    const DescripcionReporte& descripcion() const { return d_; }
    // The scopes the user's level may choose.
    QVector<Alcance> alcances() const;

    // The report to open once its table is filled.
    struct Apertura {
        int tipo = 0;
        std::optional<ParametrosReporte> parametros;
        long long filas = 0;
    };
    // Checks the request (dates, races, scope: the first fault is told and
    // nothing changes), refills the window's table with the central data
    // aggregated by the server, and says which report to open. Nothing found:
    // "No se encontro Ningun registro" titled " Busqueda " (the table is left
    // empty) and nullopt.
    std::optional<Apertura> generar(const Peticion& p);

    // The general reports' text file: refills as generar does, then writes one
    // line per centre and day with the games' amounts and the voided tickets.
    bool exportarTexto(const Peticion& p, const QString& archivo);

    // The request checked, or nullopt after telling the fault.
    std::optional<Consulta> revisar(const Peticion& p) const;

private:
    Context& ctx_;
    const DescripcionReporte& d_;
};

}  // namespace hipico
