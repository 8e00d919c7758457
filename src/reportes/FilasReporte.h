#pragma once

#include "schema/Escritores.h"

#include <QString>

namespace hipico {

// The rows the report windows write into the local report tables, one writer
// per table, every column named in the table's order after its key. Texts are
// cut to their column's width and kept to the tables' character set (latin1).

// A text as a latin1 column of `largo` characters takes it.
QString textoLocal(const QString& texto, int largo);

// rpt_diario: a group's day (or range) with its shares.
struct FilaDiario {
    QString grupo;        // ch
    double venta = 0;
    QString fecha;        // "YYYY-MM-DD"
    QString centro;       // chipico
    QString desde, hasta; // "DD-MM-YYYY"
    double saldo = 0, premios = 0, porPagar = 0;
    double porCh = 0, porCasa = 0, porAdmin = 0;
    Insercion insercion() const;
};

// rpt_jugadas: one ticket of a list.
struct FilaJugada {
    long long numero = 0;
    QString boleto;
    double monto = 0;
    long long carrera = 0, caballo = 0;
    double puesto = 0, tablas = 0, ganadores = 0;
    QString fecha;  // "DD-MM-YYYY"
    QString ch, grupo;
    double cobrado = 0;
    long long estatus = 0;
    double porCobrar = 0, cobradoReal = 0;
    Insercion insercion() const;
};

// rpt_bitacora: one entry of an audit log.
struct FilaBitacora {
    long long numero = 0, carrera = 0, caballo = 0;
    double ganadores = 0;
    QString taquilla, grupo, hora;
    QString fecha;  // "YYYY-MM-DD"
    QString nuBoleto;
    double cobrado = 0;
    QString motivo, usuario, tipoMotivo, desde, hasta;
    long long estatus = 0;
    double monto = 0, tablas = 0;
    Insercion insercion() const;
};

// rpt_dividendos: a race's result.
struct FilaDividendo {
    QString fecha;  // "DD-MM-YYYY"
    QString caballo;
    long long numCab = 0;
    double dividendo = 0;
    QString ch;
    long long carrera = 0, numCab2 = 0;
    double dividendo2 = 0;
    Insercion insercion() const;
};

// rpt_general: a centre's day, one amount per game.
struct FilaGeneral {
    QString fecha;  // "YYYY-MM-DD"
    double ganadores = 0, tablafija = 0, remate = 0, macuare = 0, puestos = 0, polla = 0;
    QString desde, hasta, ch;
    double dinamicas = 0, descargas = 0;
    Insercion insercion() const;
};

// rpt_resultadoscarreras: a race's played, paid and due amounts.
struct FilaResultado {
    QString ch, fecha;  // fecha "DD-MM-YYYY"
    long long carrera = 0;
    double jugado = 0, cobrado = 0, total = 0, porPagar = 0;
    Insercion insercion() const;
};

}  // namespace hipico
