#pragma once

#include <QString>
#include <vector>

namespace hipico {

class Context;

// One opener: reopens a program-wide recordset on one table.
struct Opener {
    enum class Connection { Servidor, Local, Hipicos };
    enum class Profile { Read, Edit };
    const char* name;      // AbrirGrupos...
    const char* sql;       // exact text of the query
    Connection connection;
    Profile profile;
    const char* global;    // rsGrupos...
    const char* table;     // table written back by the edit profile
};

const std::vector<Opener>& openers();
const Opener* findOpener(const QString& name);
// Runs an opener: a new recordset from its query replaces the one held under
// its global name. Errors (connection not open, table missing) go to the caller.
void abrir(Context& ctx, const Opener& opener);
void abrir(Context& ctx, const QString& openerName);

void AbrirGruposLectura(Context& ctx);
void AbrirGrupos(Context& ctx);
void AbrirCentrosHipicos(Context& ctx);
void AbrirDividendos(Context& ctx);
void AbrirHipodromos(Context& ctx);
void AbrirMacuares(Context& ctx);
void AbrirCaballosGanadores(Context& ctx);
void AbrirCombinaciones(Context& ctx);
void AbrirSubgrupos(Context& ctx);
void AbrirConfiguracion(Context& ctx);
void AbrirConfiguracionLectura(Context& ctx);
void AbrirTablaFija(Context& ctx);
void AbrirTipoClientes(Context& ctx);
void AbrirClientes(Context& ctx);
void AbrirMaPrincipal(Context& ctx);
void AbrirCarreras(Context& ctx);
void AbrirCaballos(Context& ctx);
void AbrirUsuarios(Context& ctx);
void AbrirRptCaballosTF(Context& ctx);
void AbrirRptJugadoresRemate(Context& ctx);
void AbrirRptResultadosTaqs(Context& ctx);
void AbrirRptResultadosCarreras(Context& ctx);
void AbrirRptGeneral(Context& ctx);
void AbrirRptDividendos(Context& ctx);
void AbrirRptBitacora(Context& ctx);
void AbrirRptDiarioRemateFinal(Context& ctx);
void AbrirRptDiarioRemate(Context& ctx);
void AbrirRptJugadas(Context& ctx);
void AbrirRptDiario(Context& ctx);
void AbrirRptMacuare(Context& ctx);
void AbrirRptDiarioMC(Context& ctx);

}  // namespace hipico
