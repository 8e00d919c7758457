#include "sales/BoletosTaquilla.h"

#include "core/Context.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "core/Textos.h"
#include "sales/JuegoGanadores.h"
#include "sales/Tickets.h"

#include <QHash>
#include <QPair>

namespace hipico {

namespace {

const char* const kColumnas = "numero, nu_boleto, hora, carrera, caballo, ganadores, cobrado, estatus";

QString nombreCaballo(Context& ctx, long long carrera, long long caballo) {
    return Row::toText(ctx.servidor().scalar(
        "SELECT caballo FROM carreras WHERE fecha = ? AND carrera = ? AND nu_caballo = ? AND id_hipodromo = ? "
        "ORDER BY id_carrera LIMIT 1",
        {fechaTrabajo(ctx), carrera, caballo, carreraYPista(ctx).pista}));
}

BoletoDia boletoDe(const Context& ctx, const Row& r) {
    const double ganadores = r.number("ganadores");
    return {r.integer("numero"),  r.text("nu_boleto"), r.text("hora"),     r.integer("carrera"),
            r.integer("caballo"), QString(),           ganadores,          ganadores * valorGanador(ctx.session),
            r.number("cobrado"),  estatusDe(r)};
}

}  // namespace

QString textoEstatus(Estatus e) {
    switch (e) {
    case Estatus::Vendido: return QStringLiteral("VENDIDO");
    case Estatus::Ganador: return QStringLiteral("GANADOR");
    case Estatus::Pagado: return QStringLiteral("PAGADO");
    case Estatus::DevolucionPagada: return QStringLiteral("DEVOLUCION PAGADA");
    case Estatus::Devolucion: return QStringLiteral("DEVOLUCION");
    case Estatus::Anulado: return QStringLiteral("ANULADO");
    }
    return {};
}

QVector<BoletoDia> boletosDelDia(Context& ctx, int cuantos) {
    const QString fecha = fechaTrabajo(ctx);
    const QString& ch = ctx.session.ch;
    const Recordset rs = ctx.servidor().query(
        std::string("SELECT ") + kColumnas + " FROM ma_principal WHERE fecha = ? AND ch = ? UNION ALL SELECT " +
            kColumnas + " FROM bitacora WHERE fecha = ? AND taquilla = ? AND estatus = 5 ORDER BY numero DESC LIMIT ?",
        {fecha, ch, fecha, ch, cuantos});
    // The names of the day's runners on the booth's track, read once.
    QHash<QPair<long long, long long>, QString> nombres;
    for (const Row& c : ctx.servidor().query(
             "SELECT carrera, nu_caballo, caballo FROM carreras WHERE fecha = ? AND id_hipodromo = ? "
             "ORDER BY id_carrera DESC",
             {fecha, carreraYPista(ctx).pista}))
        nombres.insert({c.integer("carrera"), c.integer("nu_caballo")}, c.text("caballo"));
    QVector<BoletoDia> out;
    for (const Row& r : rs) {
        BoletoDia b = boletoDe(ctx, r);
        b.nombreCaballo = nombres.value({b.carrera, b.caballo});
        out << b;
    }
    return out;
}

std::optional<BoletoDia> boletoVigente(Context& ctx, long long numero) {
    const Recordset rs = ctx.servidor().query(
        std::string("SELECT ") + kColumnas + " FROM ma_principal WHERE numero = ? AND ch = ?", {numero, ctx.session.ch});
    if (rs.empty()) return std::nullopt;
    BoletoDia b = boletoDe(ctx, rs.first());
    b.nombreCaballo = nombreCaballo(ctx, b.carrera, b.caballo);
    return b;
}

QString descripcionBoleto(const BoletoDia& b, bool enDolares) {
    return QStringLiteral("BOLETO: %1   HORA: %2\nCARRERA: %3   CABALLO: (%4) %5\nMONTO JUGADO: %6  Ganadores   %7")
        .arg(b.codigo, b.hora)
        .arg(b.carrera)
        .arg(b.caballo)
        .arg(b.nombreCaballo, textoUnidades(b.ganadores), formatoMonto(b.costo, enDolares));
}

std::optional<Impreso> copiaGanador(Context& ctx, long long numero, bool grafico) {
    Db& db = ctx.servidor();
    const Recordset rs = db.query("SELECT * FROM ma_principal WHERE numero = ? AND ch = ?", {numero, ctx.session.ch});
    if (rs.empty()) {
        const QString anulado = Row::toText(db.scalar(
            "SELECT nu_boleto FROM bitacora WHERE numero = ? AND taquilla = ? AND estatus = 5 LIMIT 1",
            {numero, ctx.session.ch}));
        ctx.dialogs.refuse(kTituloReimpresion,
                           anulado.isEmpty()
                               ? texto::VerifiqueNumeroBoleto
                               : QStringLiteral("EL BOLETO %1 FUE ANULADO: NO SE IMPRIME DE NUEVO").arg(anulado));
        return std::nullopt;
    }
    const Row& r = rs.first();
    const Row grupo = parametrosGanadores(ctx, r.text("carrera"), r.text("caballo"));
    BoletoVendido b;
    b.numero = r.integer("numero");
    b.codigo = r.text("nu_boleto");
    b.carrera = r.integer("carrera");
    b.caballo = r.integer("caballo");
    b.nombreCaballo = nombreCaballo(ctx, b.carrera, b.caballo);
    b.ganadores = r.number("ganadores");
    b.costo = b.ganadores * valorGanador(ctx.session);
    b.fecha = r.text("fecha");
    b.hora = r.text("hora");
    // The password path writes no sale keys: its ticket has its own form.
    b.conClave = r.text("llave") == QLatin1String("0");
    return copiaBoleto(ticketGanador(ctx, grupo, b, grafico), fechaTrabajo(ctx), horaTexto(ctx.clock.now().time()));
}

}  // namespace hipico
