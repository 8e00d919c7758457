#pragma once

#include "core/Recordset.h"

#include <QDate>
#include <QString>
#include <QStringList>

namespace hipico {

class Context;

// The boxes of the race-card screen when a horse is accepted.
struct EntradaCaballo {
    QDate fecha;        // first date picker
    QString hipodromo;  // track chosen in the list
    QString carrera;    // race number chosen in the list
    QString caballo;    // selected horse
    QString numero;     // horse number
};

// The race-card screen (Form_Carreras) without its widgets: the day's card in
// carreras (one row per horse), the list of known horse names, the copy of a
// card from the betting-centre server and the deletion of old rows.
class CarrerasLogica {
public:
    explicit CarrerasLogica(Context& ctx) : ctx_(ctx) {}

    // The track list: every track, in the table's order.
    QStringList hipodromos();
    // The system's current track (configuracion), where a card is entered
    // unless another one is chosen; "" when it has none.
    QString hipodromoActual();

    // Accept: adds the horse to the race (a carreras row with the values of a
    // manual entry) and its name to caballos. An unknown track is refused with
    // "Debe seleccionar un hipodromo" and writes nothing. Returns whether the
    // horse was added.
    bool aceptar(const EntradaCaballo& e);

    // The horse names that contain the text (the " CABALLO " list).
    Recordset buscarCaballos(const QString& texto);
    // Deletes the first known name that contains the text. An empty name
    // deletes nothing. Returns whether the statement ran.
    bool eliminarCaballo(const QString& nombre);

    // The horses of a race number on a date, of every track (after an entry
    // and when a race is picked from the viewing list).
    Recordset llenarGrilla(const QDate& fecha, const QString& carrera);
    // The same restricted to one track (when a race number is typed into the
    // viewing list). An unknown track shows no horse.
    Recordset llenarGrillaHipodromo(const QDate& fecha, const QString& carrera, const QString& hipodromo);

    // Copies the card of the dates desde..hasta from the betting-centre server
    // into carreras, opened for winner, fixed-table and auction sale, and makes
    // its first race the current race of desde. When the central card already
    // has rows on desde it asks first; a copy made again adds a second copy.
    // Returns whether rows were copied.
    bool transferirCarreras(const QDate& desde, const QDate& hasta);

    // Housekeeping: rows strictly older than the cut-off.
    void eliminarCarrerasViejas(const QDate& corte);
    void eliminarRematesViejos(const QDate& corte);
    void eliminarBoletosViejos(const QDate& corte);
    // Deletes every horse of one race of one track on a date. Returns the
    // number of rows deleted.
    long long eliminarCarrera(const QDate& fecha, const QString& carrera, const QString& hipodromo);

private:
    Context& ctx_;
};

}  // namespace hipico
