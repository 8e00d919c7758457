#pragma once

#include "core/Session.h"

#include <QString>
#include <memory>

namespace hipico {

class Context;
class Db;
struct Config;

// Settings of this machine, kept beside the program rather than in the
// central database: the booth's sale unit, and the printing settings when
// the machine has no local report schema.

// The per-machine settings file: "taquilla.ini" in the configured local
// folder (else the user's configuration folder of hipico).
QString archivoAjustesMaquina(const Config& config);

// The unit the winner-bet sale window sells in.
enum class UnidadVenta { Ganadores, Bolivares };
UnidadVenta leerUnidadVenta(const Config& config);
void guardarUnidadVenta(const Config& config, UnidadVenta unidad);

// The local report connection: the program's own when it is open, else one
// opened just for the caller (booth levels get none at sign-in); nullptr
// when this machine has no reachable local schema.
std::shared_ptr<Db> conexionLocalDisponible(Context& ctx);

// Printing settings: the `conf_local` row of the local schema when it can be
// reached; else the copy kept in the per-machine file; else the defaults of a
// new local schema (printing on, graphic mode, font 8, barcodes on).
ConfLocal leerConfImpresion(Context& ctx);
// Loads them into the session.
void cargarImpresion(Context& ctx);
// Saves them in `conf_local` when it can be reached and always in the
// per-machine file; returns whether `conf_local` was written.
bool guardarConfImpresion(Context& ctx, const ConfLocal& conf);

}  // namespace hipico
