#include "core/Openers.h"

#include "core/Context.h"

namespace hipico {

namespace {
using C = Opener::Connection;
using P = Opener::Profile;
}  // namespace

const std::vector<Opener>& openers() {
    static const std::vector<Opener> all = {
        {"AbrirGruposLectura", "select * from grupos order by ch", C::Servidor, P::Read, "rsGrupos", "grupos"},
        {"AbrirGrupos", "select * from grupos order by ch", C::Servidor, P::Edit, "rsGrupos", "grupos"},
        {"AbrirCentrosHipicos", "select * from centroshipicos", C::Hipicos, P::Edit, "rsCentrosHipicos", "centroshipicos"},
        {"AbrirDividendos", "select * from dividendos", C::Servidor, P::Edit, "rsDividendos", "dividendos"},
        {"AbrirHipodromos", "select * from hipodromos", C::Servidor, P::Read, "rsHipodromos", "hipodromos"},
        {"AbrirMacuares", "select * from macuares ", C::Servidor, P::Read, "rsMacuares", "macuares"},
        {"AbrirCaballosGanadores", "select * from caballos_ganadores", C::Servidor, P::Edit, "rsCaballosGanadores", "caballos_ganadores"},
        {"AbrirCombinaciones", "select * from combinaciones_general", C::Servidor, P::Edit, "rsCombinaciones", "combinaciones_general"},
        {"AbrirSubgrupos", "select * from subgrupos", C::Servidor, P::Edit, "rsSubgrupos", "subgrupos"},
        {"AbrirConfiguracion", "select * from configuracion", C::Servidor, P::Edit, "rsConfiguracion", "configuracion"},
        {"AbrirConfiguracionLectura", "select * from configuracion", C::Servidor, P::Read, "rsConfiguracionLectura", "configuracion"},
        {"AbrirTablaFija", "select * from tablafija", C::Servidor, P::Read, "rsTablaFija", "tablafija"},
        {"AbrirTipoClientes", "select * from tipo_clientes", C::Servidor, P::Read, "rsTipoClientes", "tipo_clientes"},
        {"AbrirClientes", "select * from clientes", C::Servidor, P::Edit, "rsClientes", "clientes"},
        {"AbrirMaPrincipal", "select * from ma_principal", C::Servidor, P::Read, "rsMaPrincipal", "ma_principal"},
        {"AbrirCarreras", "select * from carreras", C::Servidor, P::Edit, "rsCarreras", "carreras"},
        {"AbrirCaballos", "select * from caballos", C::Servidor, P::Edit, "rsCaballos", "caballos"},
        {"AbrirUsuarios", "select * from usuarios", C::Servidor, P::Edit, "rsUsuarios", "usuarios"},
        {"AbrirRptCaballosTF", "select * from rpt_caballos_tf", C::Local, P::Edit, "rsRptCaballosTF", "rpt_caballos_tf"},
        {"AbrirRptJugadoresRemate", "select * from rpt_jugadores_remate", C::Local, P::Edit, "rsRptJugadoresRemate", "rpt_jugadores_remate"},
        {"AbrirRptResultadosTaqs", "select * from rpt_resultadostaqs", C::Local, P::Edit, "rsRptResultadosTaqs", "rpt_resultadostaqs"},
        {"AbrirRptResultadosCarreras", "select * from rpt_resultadoscarreras", C::Local, P::Edit, "rsRptResultadosCarreras", "rpt_resultadoscarreras"},
        {"AbrirRptGeneral", "select * from rpt_general", C::Local, P::Edit, "rsRptGeneral", "rpt_general"},
        {"AbrirRptDividendos", "select * from rpt_dividendos", C::Local, P::Edit, "rsRptDividendos", "rpt_dividendos"},
        {"AbrirRptBitacora", "select * from rpt_bitacora", C::Local, P::Edit, "rsRptBitacora", "rpt_bitacora"},
        {"AbrirRptDiarioRemateFinal", "select * from rpt_diariorematefinal", C::Local, P::Edit, "rsRptDiarioRemateFinal", "rpt_diariorematefinal"},
        {"AbrirRptDiarioRemate", "select * from rpt_diarioremate", C::Local, P::Edit, "rsRptDiarioRemate", "rpt_diarioremate"},
        {"AbrirRptJugadas", "select * from rpt_jugadas", C::Local, P::Edit, "rsRptJugadas", "rpt_jugadas"},
        {"AbrirRptDiario", "select * from rpt_diario", C::Local, P::Edit, "rsRptDiario", "rpt_diario"},
        // Shares its global with AbrirCombinaciones: whichever ran last is what rsCombinaciones holds.
        {"AbrirRptMacuare", "select * from rpt_macuare", C::Local, P::Edit, "rsCombinaciones", "rpt_macuare"},
        {"AbrirRptDiarioMC", "select * from rpt_diario_mc", C::Local, P::Edit, "rsRptDiarioMC", "rpt_diario_mc"},
    };
    return all;
}

const Opener* findOpener(const QString& name) {
    for (const Opener& o : openers())
        if (name == QLatin1String(o.name)) return &o;
    return nullptr;
}

void abrir(Context& ctx, const Opener& o) {
    std::shared_ptr<Db> db;
    switch (o.connection) {
    case C::Servidor: ctx.servidor(); db = ctx.cnServidor; break;
    case C::Local: ctx.local(); db = ctx.cnLocal; break;
    case C::Hipicos: ctx.hipicos(); db = ctx.cnHipicos; break;
    }
    Recordset rs = db->query(o.sql);
    if (o.profile == P::Edit) rs.makeEditable(db, QString::fromLatin1(o.table));
    ctx.setRecordset(QString::fromLatin1(o.global), std::move(rs));
}

void abrir(Context& ctx, const QString& openerName) {
    const Opener* o = findOpener(openerName);
    if (!o) throw DbError("no existe el procedimiento " + openerName.toStdString());
    abrir(ctx, *o);
}

#define HIPICO_OPENER(fn) \
    void fn(Context& ctx) { abrir(ctx, QStringLiteral(#fn)); }
HIPICO_OPENER(AbrirGruposLectura)
HIPICO_OPENER(AbrirGrupos)
HIPICO_OPENER(AbrirCentrosHipicos)
HIPICO_OPENER(AbrirDividendos)
HIPICO_OPENER(AbrirHipodromos)
HIPICO_OPENER(AbrirMacuares)
HIPICO_OPENER(AbrirCaballosGanadores)
HIPICO_OPENER(AbrirCombinaciones)
HIPICO_OPENER(AbrirSubgrupos)
HIPICO_OPENER(AbrirConfiguracion)
HIPICO_OPENER(AbrirConfiguracionLectura)
HIPICO_OPENER(AbrirTablaFija)
HIPICO_OPENER(AbrirTipoClientes)
HIPICO_OPENER(AbrirClientes)
HIPICO_OPENER(AbrirMaPrincipal)
HIPICO_OPENER(AbrirCarreras)
HIPICO_OPENER(AbrirCaballos)
HIPICO_OPENER(AbrirUsuarios)
HIPICO_OPENER(AbrirRptCaballosTF)
HIPICO_OPENER(AbrirRptJugadoresRemate)
HIPICO_OPENER(AbrirRptResultadosTaqs)
HIPICO_OPENER(AbrirRptResultadosCarreras)
HIPICO_OPENER(AbrirRptGeneral)
HIPICO_OPENER(AbrirRptDividendos)
HIPICO_OPENER(AbrirRptBitacora)
HIPICO_OPENER(AbrirRptDiarioRemateFinal)
HIPICO_OPENER(AbrirRptDiarioRemate)
HIPICO_OPENER(AbrirRptJugadas)
HIPICO_OPENER(AbrirRptDiario)
HIPICO_OPENER(AbrirRptMacuare)
HIPICO_OPENER(AbrirRptDiarioMC)
#undef HIPICO_OPENER

}  // namespace hipico
