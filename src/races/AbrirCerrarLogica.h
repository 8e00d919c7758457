#pragma once

#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

namespace hipico {

class Context;

// The pool boxes of the opening and closing screen.
struct Pozos {
    bool ganadores = false;  // winner bets: venta
    bool remate = false;     // auction: venta_rm
    bool macuare = false;    // multi-race combination: venta_mc (current race only)
    bool tablaFija = false;  // fixed table: venta_tf
};

// One race of the chosen track and its sale flags, as the indicator row shows it.
struct Indicador {
    int carrera = 0;
    int venta = 0;
    int ventaTf = 0;
    int ventaRm = 0;
    int ventaMc = 0;
};

// The opening and closing screen (Form_AbrirCerrar) without its widgets.
// Every change is one plain statement on carreras (and one on configuracion
// for the current race): the sale windows read these flags under their own
// locks and simply wait for the statement.
class AbrirCerrarLogica {
public:
    explicit AbrirCerrarLogica(Context& ctx) : ctx_(ctx) {}

    // The track list: tracks whose estatus is 1.
    QStringList hipodromos();
    // Chooses the track of the indicators and of the Open / Close buttons and
    // reads the working date. False when no track has that name.
    bool elegirHipodromo(const QString& nombre);
    const QString& fecha() const { return fecha_; }
    // The current race of the system, as last read with the working date.
    int carreraActualDelSistema() const { return carreraActual_; }

    // The races of the working date and chosen track with their flags: one
    // query, nothing else (it runs every second while the screen is open).
    QVector<Indicador> indicadores();

    // Open / Close buttons: the checked pools of one race of the chosen track.
    // estado_puestos always follows the button. Returns whether it ran.
    bool abrir(int carrera, const Pozos& pozos) { return botones(carrera, pozos, 1); }
    bool cerrar(int carrera, const Pozos& pozos) { return botones(carrera, pozos, 0); }

    // Open / Close the current race: makes it the current race of the system,
    // switches the checked pools in configuracion and changes that race number
    // on every track. Opening a race that already has a result asks first.
    bool abrirCarreraActual(int carrera, const Pozos& pozos) { return carreraActual(carrera, pozos, 1); }
    bool cerrarCarreraActual(int carrera, const Pozos& pozos) { return carreraActual(carrera, pozos, 0); }

    // The main menu's caption when the screen closes.
    QString tituloAlCerrar() const;

private:
    bool botones(int carrera, const Pozos& pozos, int valor);
    bool carreraActual(int carrera, const Pozos& pozos, int valor);
    QString leerFecha();

    Context& ctx_;
    std::optional<int> idHipodromo_;
    QString fecha_;
    int carreraActual_ = 0;
};

}  // namespace hipico
