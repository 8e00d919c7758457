#include "subastas/Liquidacion.h"

#include "core/Db.h"
#include "core/Diario.h"
#include "core/Formato.h"

#include <QHash>

namespace hipico {

namespace {

QString tabla(int t) { return QStringLiteral("tabla%1").arg(t); }
QString mesa(int t) { return QStringLiteral("mesa%1").arg(t); }

// The commission total as the board shows it: rounded by the house rule when
// the group rounds (the rule reads the number's text; its whole part must fit
// in 16 bits).
double redondearComision(double comision, bool& desborde) {
    try {
        return RedondearEntero(QString::number(comision, 'g', 15)).toDouble();
    } catch (const ErrorDesbordamiento&) {
    } catch (const ErrorTipo&) {
    }
    desborde = true;
    return comision;
}

const Row* filaDelCaballo(const Recordset& filas, int numero) {
    for (const Row& r : filas)
        if (r.toInt("nu_caballo") == numero) return &r;
    return nullptr;
}

}  // namespace

ParametrosSubasta ParametrosSubasta::de(const Row& g) {
    ParametrosSubasta p;
    p.grupo = g.textOr("grupo");
    p.ch = g.textOr("ch");
    p.subastas = static_cast<int>(g.integerOr("subastas"));
    p.rematetam = static_cast<int>(g.integerOr("rematetam"));
    p.porRemate = g.numberOr("por_remate");
    p.porRematador = g.numberOr("por_rematador");
    p.tablazo = g.numberOr("tablazo");
    for (int t = 1; t <= 4; ++t) p.tablaz[t] = g.numberOr(QStringLiteral("tablaz%1").arg(t));
    p.redondear = static_cast<int>(g.integerOr("redondear"));
    p.minimoRemate = g.numberOr("minimo_remate");
    p.doblaje = g.numberOr("doblaje");
    return p;
}

ParametrosSubasta leerParametros(Db& db, const QString& grupo) {
    const Recordset rs = db.query(
        "SELECT grupo,subastas,por_remate,por_rematador,tablazo,tablaz1,tablaz2,tablaz3,tablaz4,no_aut_3t,redondear,"
        "pradmincrear,ch,rematetam,minimo_remate,doblaje FROM grupos Where  grupo = ?",
        {grupo});
    return rs.empty() ? ParametrosSubasta() : ParametrosSubasta::de(rs.first());
}

Recordset filasCarrera(Db& db, const QString& fecha, long long carrera, const QString& ch) {
    return db.query("select * FROM carreras_remate  where fecha= ?  and carrera= ? and ch= ? order by id_carrera ",
                    {fecha, carrera, ch});
}

long long ultimaCarrera(Db& db, const QString& fecha, const QString& ch) {
    return Row::toInteger(
        db.scalar("select max(carrera) as nummaxcarrera FROM carreras_remate  where fecha= ? and ch= ?", {fecha, ch}));
}

int ganadorEfectivo(const Recordset& filas, const LadoSubasta& lado) {
    if (filas.empty()) return 0;
    const int win = filas.first().toInt("win");
    const int segundo = filas.first().toInt("segundolugar");
    const Row* fila = filaDelCaballo(filas, win);
    if (fila && segundo != 0 && fila->integer(lado.invalidado) == 1) return segundo;
    return win;
}

TotalesSubasta calcularTotales(const Recordset& filas, const LadoSubasta& lado, const ParametrosSubasta& p,
                               double porcentaje) {
    TotalesSubasta t;
    const int ganador = ganadorEfectivo(filas, lado);
    const int lineas = std::min(filas.size(), kLineasTablero);
    for (int n : lado.tablas) {
        TotalTabla tt;
        tt.tabla = n;
        for (int i = 0; i < lineas; ++i) {
            const double monto = filas[i].number(tabla(n));
            tt.total += monto;
            tt.comision += monto * porcentaje / 100;
            if (esCodigoCasa(filas[i].text(mesa(n)))) {
                t.casaJugado += monto;
                if (ganador != 0 && filas[i].toInt("nu_caballo") == ganador) t.casaGanado += monto;
            }
        }
        if (p.redondear == 1) tt.comision = redondearComision(tt.comision, t.desborde);
        tt.premio = std::max(0.0, tt.total - tt.comision - p.tablazDe(n));
        t.tablas.push_back(tt);
    }
    if (!lado.tablaCasa.isEmpty())
        for (int i = 0; i < lineas; ++i) t.casaJugado += filas[i].number(lado.tablaCasa);
    if (!filas.empty()) t.pote = filas.first().number(lado.pote);
    return t;
}

LiquidacionCarrera liquidarCarrera(const Recordset& filas, const LadoSubasta& lado, double tablazo) {
    LiquidacionCarrera l;
    l.tablazo = tablazo;
    for (int n : lado.tablas) l.tablas.push_back({n, 0, 0, 0});
    if (filas.empty()) return l;
    const Row& primera = filas.first();
    l.carrera = primera.integer("carrera");
    l.porcentaje = primera.number("porcentaje");
    l.pote = primera.number(lado.pote);
    l.ganador = primera.toInt("win");
    l.segundo = primera.toInt("segundolugar");
    for (const Row& r : filas) {
        const double porcentaje = r.number("porcentaje");
        for (TotalTabla& t : l.tablas) {
            const double monto = r.number(tabla(t.tabla));
            t.total += monto;
            t.comision += monto * porcentaje / 100;
            if (esCodigoCasa(r.text(mesa(t.tabla)))) l.casaJugado += monto;
        }
        if (!lado.tablaCasa.isEmpty()) l.casaJugado += r.number(lado.tablaCasa);
    }
    // The house's share: the pool of each table where it bought the winner,
    // and that part of the pot less the fixed deduction.
    const int ganador = ganadorEfectivo(filas, lado);
    const Row* fila = ganador != 0 ? filaDelCaballo(filas, ganador) : nullptr;
    int ganadas = 0;
    double parteTablas = 0;
    for (TotalTabla& t : l.tablas) {
        l.venta += t.total;
        l.comision += t.comision;
        t.premio = t.total - t.comision;
        if (fila && esCodigoCasa(fila->text(mesa(t.tabla))) && fila->number(tabla(t.tabla)) > 0) {
            ++ganadas;
            parteTablas += t.premio;
        }
    }
    l.premios = l.venta - l.comision + l.pote - tablazo;
    if (ganadas > 0) {
        l.caballoCasa = ganador;
        l.montoCasa = parteTablas + (l.pote - tablazo) * ganadas / l.tablas.size();
    }
    l.ganancia = l.comision - l.casaJugado + l.montoCasa - l.pote;
    return l;
}

LiquidacionDia liquidarDia(Db& db, const QString& fecha, const QString& ch, const LadoSubasta& lado,
                           const ParametrosSubasta& p) {
    LiquidacionDia d;
    d.fecha = fecha;
    d.ch = ch;
    const long long ultima = ultimaCarrera(db, fecha, ch);
    for (long long carrera = 1; carrera <= ultima; ++carrera) {
        const Recordset filas = filasCarrera(db, fecha, carrera, ch);
        if (filas.empty()) continue;
        const LiquidacionCarrera l = liquidarCarrera(filas, lado, p.tablazo);
        d.venta += l.venta;
        d.casaJugado += l.casaJugado;
        d.casaGanado += l.montoCasa;
        d.ganancia += l.ganancia;
        d.tablazo += p.tablazo;
        d.carreras.push_back(l);
    }
    d.porRematador = d.ganancia * p.porRematador / 100;
    return d;
}

ParametrosSubasta parametrosDelCentro(Db& db, const QString& ch) {
    for (const Row& g : db.query("SELECT * FROM grupos WHERE ch = ? ORDER BY grupo", {ch})) {
        ParametrosSubasta p = ParametrosSubasta::de(g);
        if (p.diseno()) return p;
    }
    ParametrosSubasta p;
    p.ch = ch;
    p.subastas = 2;
    return p;
}

void guardarMontosCasa(Db& db, const QString& fecha, long long carrera, const ParametrosSubasta& p) {
    const DisenoSubasta* d = p.diseno();
    if (!d) d = disenoPara(2, 0);
    const Recordset filas = filasCarrera(db, fecha, carrera, p.ch);
    for (const LadoSubasta* lado : {&d->grande, &d->pequeno}) {
        if (!lado->existe()) continue;
        const double monto = liquidarCarrera(filas, *lado, p.tablazo).montoCasa;
        db.exec("update carreras_remate set " + lado->montoCasa.toStdString() +
                    "=? Where carrera = ? and fecha = ? and ch = ?",
                {monto, carrera, fecha, p.ch});
    }
}

double resultadoSubasta(Db& db, const QString& fecha, const ParametrosSubasta& grupo) {
    const DisenoSubasta* d = grupo.diseno();
    if (!d) return 0;
    double resultado = 0;
    for (const LadoSubasta* lado : {&d->grande, &d->pequeno})
        if (lado->existe()) resultado += liquidarDia(db, fecha, grupo.ch, *lado, grupo).ganancia;
    return resultado;
}

void escribirRemateDelDia(Db& db, const QString& fecha) {
    // Groups of one centre with the same board and deduction share one computation.
    QHash<QString, double> hechos;
    for (const Row& g : db.query("SELECT * FROM grupos ORDER BY grupo")) {
        const ParametrosSubasta p = ParametrosSubasta::de(g);
        const QString clave = p.ch + '|' + QString::number(p.subastas) + '|' + QString::number(p.rematetam) + '|' +
                              QString::number(p.tablazo, 'g', 17);
        if (!hechos.contains(clave)) hechos.insert(clave, resultadoSubasta(db, fecha, p));
        db.exec("UPDATE ventas_ganadores_general SET remate = ? WHERE grupo = ? AND fecha = ?",
                {hechos.value(clave), p.grupo, fecha});
        anotar(db, {operacion::Remate, {}, {}, p.grupo, fecha, 0, 0, hechos.value(clave)});
    }
}

}  // namespace hipico
