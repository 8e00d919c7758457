#pragma once

#include "core/Recordset.h"

#include <QString>

namespace hipico {

// Per-machine printing settings (the local settings row).
struct ConfLocal {
    int impresion = 1;                        // 1 = print tickets
    QString puerto = QStringLiteral("WINDOWS2:");  // printer mode or port
    int tamletra = 8;                         // font size of the graphic mode
    int codbarras = 1;                        // 1 = print the barcode
    QString ipSecundaria;
    QString grupo;
    QString ip;
    QString server;
};

// Who is signed in, the system settings and the parameters of the user's
// group. The sign-in fills the identity; the main menu's load fills the
// settings and the group parameters; everything else only reads them.
struct Session {
    // Identity (sign-in).
    long long idUsuario = 0;
    QString usuario;
    QString clave;          // stored enciphered password
    QString grupo;
    QString nivel;
    QString nombre;
    QString estatus;
    QString mac;            // machine of the last login
    QString fechaIngreso;   // date of the last login
    QString ch;             // betting centre of the user's group
    QString subgrupo;       // subgroup code (not for the administrator levels and "Socio")
    QString subgrupoNombre;
    int bloqueo = 0;        // the group's one-computer rule
    int subastas = 0;       // the group's auction switch / number of tables
    QString ipPublica;      // shown at sign-in and recorded with the login

    // System settings (configuracion).
    QString fecha;          // working date "YYYY-MM-DD"
    double version = 0;     // newest program version
    int permitirTf = 0;
    int permitirMc = 0;
    QString mora;
    QString mensaje;
    QString web;
    int centrarform = 0;
    QString empresa;
    int modoventa = 0;      // 0 one track; non-zero per track; 3 also writes estado_puestos
    int funtdolar = 0;      // 1 = amounts in dollars
    Row configuracion;      // the whole settings row

    // Group parameters (grupos row of the user's group).
    int noAut3t = 0;
    int ticketCobro = 0;
    int permitirpdiv = 0;
    int cupoviptf = 0;
    QString nameEmpresa;
    QString rifEmpresa;
    QString direccionEmpresa;
    QString tlfEmpresa;
    int anularBoletoWin = 0;
    double cuatroCabVr2 = 0;  // 4cabvr2
    int clientes = 0;
    int duracionBoletos = 0;
    int verBoletosTaq = 0;
    int apuestaMaxwin = 0;
    QString reportTaqs;
    int ccasarem = 0;
    int mascara = 0;
    double minBs = 0;
    double minDol = 0;
    int ganadores = 0;        // the group sells winner bets
    QString porRemate;
    QString porRematador;
    Row grupoRow;             // the whole group row (empty when the group has none)

    ConfLocal confLocal;

    bool enDolares() const { return funtdolar == 1; }
    // A group parameter by name, from the loaded group row (0 / "" when absent).
    double parametro(const QString& columna) const;
    QString parametroTexto(const QString& columna) const;
    // A system setting by name, from the loaded settings row.
    double ajuste(const QString& columna) const;
    QString ajusteTexto(const QString& columna) const;
};

// The main menu's caption: "MENU PRINCIPAL -  " + centre + " - " + user, then
// the current race's state when one is given.
QString tituloMenuPrincipal(const Session& s, const QString& estado = {});

// Sign-in: the user's row (id_usuario, usuario, clave, grupo, nivel, nombre, estatus, mac, fecha_ingreso).
void cargarIdentidad(Session& s, const Row& usuario);
// Sign-in: the user's group row (ch, subgrupo, bloqueo, Subastas).
void cargarGrupoUsuario(Session& s, const Row& grupo);
// Sign-in: the subgroup row (nombre, subgrupo).
void cargarSubgrupo(Session& s, const Row& subgrupo);
// Sign-in (fecha, version) and menu load (the rest): the settings row.
void cargarConfiguracion(Session& s, const Row& configuracion);
// Menu load: scans the groups from the first row for the user's group and
// loads its parameters. A group with no row leaves them at zero or empty;
// returns whether the row was found.
bool cargarParametrosGrupo(Session& s, const Recordset& grupos);
// Group change: the chosen group's row replaces the session's group values.
void cambiarGrupo(Session& s, const Row& grupo);
// The local settings row (conf_local).
void cargarConfLocal(Session& s, const Row& confLocal);

}  // namespace hipico
