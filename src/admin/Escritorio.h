#pragma once

#include "core/Guardia.h"
#include "core/Recordset.h"
#include "reportes/Alcance.h"

#include <QString>
#include <functional>
#include <QStringList>
#include <optional>

namespace hipico {

class Context;
class Db;

// The winners desk (Form_Admin_Win): the administrator's commands on the
// winner-bet game of one day. Each tab of the window has its command class;
// every command takes the selection it acts on as a value, so none can run
// on a choice the window no longer shows, and other windows run the same
// commands with their own selection. Refusals and results reach the user
// through the context's dialogs; a database failure goes through the error
// guard and changes nothing.

struct Session;

// A window's scope (the report's Alcance): the administrator's desk works on
// the whole network ("TODOS"), a manager on the own group or on the groups of
// the own subgroup. A scope is taken from the session when the window opens,
// never from a field the user can edit, and travels into every statement as
// a bound value.
// The scope's term on a column holding a group code (" and <columna> ...";
// "" for the network); its value is appended to params.
std::string terminoAlcance(const Alcance& a, const char* columnaGrupo, Params& params);
// The same on a column holding a centre: the centres of the scope's groups.
std::string terminoCentro(const Alcance& a, const char* columnaCentro, Params& params);
// Whether a group (or a centre) is inside the scope.
bool contieneGrupo(Db& db, const Alcance& a, const QString& grupo);
bool contieneCentro(Db& db, const Alcance& a, const QString& centro);
bool esRed(const Alcance& a);
// A scope as a void checks it on the locked ticket (by its `grupo`); unset for the network.
std::function<bool(Db&, const Row&)> dentroDe(const Alcance& a);
// The manager's scopes: the user's own group, and the subgroup of that group.
Alcance alcanceGrupo(const Session& s);
Alcance alcanceSubgrupo(const Session& s);

// What the desk acts on: the window's date, track, race, centre and group,
// inside the window's scope.
struct Seleccion {
    QString fecha;                             // "YYYY-MM-DD"
    QString hipodromo;                         // track name ("" = none chosen)
    long long carrera = 1;
    QString centro = QStringLiteral("TODOS");  // a centre, or every centre
    QString grupo = QStringLiteral("TODOS");   // a group, or every group
    Alcance alcance;                           // the window's scope
    bool centroElegido() const;
    bool grupoElegido() const;
};
// The desk's first selection: the working day, race 1, every centre and group.
Seleccion seleccionInicial(const Context& ctx);

// The title under which the application speaks for itself.
inline const QString kTituloAplicacion = QStringLiteral("hipico");
// The desk's name in the error log.
inline const QString kVentanaEscritorio = QStringLiteral("Form_Admin_Win");

// What the desk's commands share.
class ComandoEscritorio {
protected:
    explicit ComandoEscritorio(Context& ctx) : ctx_(ctx) {}

    Db& db() const;
    // Runs a command through the error guard.
    template <class F>
    bool guardado(F&& fn) const {
        return proteger(ctx_, kVentanaEscritorio, std::forward<F>(fn));
    }
    // The per-track option: results and rules go by track.
    bool porHipodromo() const;
    // The chosen track's id: with the per-track option a track must be
    // chosen (exigir: the user is told so); otherwise the chosen one or the
    // settings' track.
    std::optional<long long> idHipodromo(const Seleccion& s, bool exigir) const;
    // The unit price of a winner bet (configuracion.valor_ganador).
    double valorGanador() const;
    // An amount typed with "," or "." as decimal point: finite, not negative, not huge.
    static std::optional<double> monto(const QString& texto);

    Context& ctx_;
};

// The choices the desk offers, and the booth users of the chosen group.
class OpcionesEscritorio : public ComandoEscritorio {
public:
    explicit OpcionesEscritorio(Context& ctx) : ComandoEscritorio(ctx) {}
    QStringList hipodromos() const;                     // tracks in use (estatus 1)
    QString hipodromoPorDefecto() const;                // the settings' track
    // "TODOS" then every centre, and the centre's groups, of the scope.
    QStringList centros(const Alcance& a = {}) const;
    QStringList grupos(const QString& centro, const Alcance& a = {}) const;
    Recordset taquillasDelGrupo(const Seleccion& s) const;  // usuario, nombre, plantilla

private:
    // One column of a query's rows after the given first entries.
    QStringList lista(const std::string& sql, const Params& params, const QString& columna,
                      QStringList primero = {}) const;
};

}  // namespace hipico
