#include "subastas/ImpresosSubasta.h"

#include "core/Db.h"
#include "core/Formato.h"

#include <QMap>

namespace hipico {

namespace {

const QString kRaya = QStringLiteral("------------------------------");

QString dinero(double v) { return formatoDolar(v); }

// Texts a buyer box holds that are no buyer.
bool esComprador(const QString& mesa) {
    const QString m = mesa.trimmed();
    return !m.isEmpty() && m != QLatin1String("INV") && m != subasta::Invalidado && m != QLatin1String("RET");
}

}  // namespace

QStringList encabezadoSubasta(const QString& titulo, const QString& ch, const QDateTime& ahora) {
    return {titulo, QStringLiteral("CENTRO HIPICO ") + ch, QStringLiteral("FECHA: ") + fechaVista(ahora.date()),
            QStringLiteral("HORA: ") + horaTexto(ahora.time())};
}

QStringList lineasCarrera(const LiquidacionCarrera& l, const DisenoSubasta& d) {
    QStringList out;
    out << QStringLiteral("Carrera ") + QString::number(l.carrera);
    out << QStringLiteral("Venta: ") + dinero(l.venta);
    if (d.jugadoPorTabla)
        for (const TotalTabla& t : l.tablas) out << QStringLiteral("%1T: ").arg(t.tabla) + dinero(t.total);
    out << QStringLiteral("Porcentaje: ") + QString::number(l.porcentaje);
    out << QStringLiteral("Casa Jugado: ") + dinero(l.casaJugado);
    out << QStringLiteral("Casa Ganado: ") + dinero(l.montoCasa);
    out << QStringLiteral("Premios: ") + dinero(l.premios);
    if (d.premiosPorTabla) {
        for (const TotalTabla& t : l.tablas) out << QStringLiteral("Premio T(%1): ").arg(t.tabla) + dinero(t.premio);
        if (d.aGanarPorTabla) out << QStringLiteral("PREMIO TOTAL : ") + dinero(l.premios);
    }
    out << QStringLiteral("Tablazo: ") + dinero(l.tablazo);
    out << QStringLiteral("Pote: ") + dinero(l.pote);
    QString ganador = QStringLiteral("Cab Ganador: ") + QString::number(l.ganador);
    if (l.segundo != 0 && l.segundo != l.ganador) ganador += QStringLiteral("   2do: ") + QString::number(l.segundo);
    out << ganador;
    out << QStringLiteral("Porcentaje de la Jugada: ") + dinero(l.comision);
    out << QStringLiteral("Monto para la Casa: ") + dinero(l.montoCasa);
    out << QStringLiteral("Ganancia: ") + dinero(l.ganancia);
    return out;
}

QStringList lineasDia(const LiquidacionDia& dia) {
    return {QStringLiteral("Venta Final: ") + dinero(dia.venta),
            QStringLiteral("Casa Jugado Final: ") + dinero(dia.casaJugado),
            QStringLiteral("Casa Ganado Final: ") + dinero(dia.casaGanado),
            QStringLiteral("Ganancia Final: ") + dinero(dia.ganancia),
            QStringLiteral("Tablazo Final: ") + dinero(dia.tablazo),
            QStringLiteral("Por Rematador: ") + dinero(dia.porRematador)};
}

QStringList lineasFinal(const LiquidacionDia& dia, const DisenoSubasta& d) {
    QStringList out;
    for (const LiquidacionCarrera& l : dia.carreras) out << kRaya << lineasCarrera(l, d);
    out << kRaya << lineasDia(dia);
    return out;
}

QStringList lineasGanadores(Db& db, const QString& fecha, const QString& ch, const DisenoSubasta& d) {
    QStringList out;
    const long long ultima = ultimaCarrera(db, fecha, ch);
    for (long long carrera = 1; carrera <= ultima; ++carrera) {
        const Recordset filas = filasCarrera(db, fecha, carrera, ch);
        if (filas.empty()) continue;
        out << kRaya << QStringLiteral("Carrera ") + QString::number(carrera);
        for (const LadoSubasta* lado : {&d.grande, &d.pequeno}) {
            if (!lado->existe()) continue;
            const int ganador = ganadorEfectivo(filas, *lado);
            out << lado->nombre + QStringLiteral(" Cab Ganador: ") + QString::number(ganador);
            const int i = filas.find(QStringLiteral("nu_caballo"), QString::number(ganador));
            const LiquidacionCarrera l = liquidarCarrera(filas, *lado, 0);
            for (const TotalTabla& t : l.tablas) {
                const QString comprador = i >= 0 ? filas[i].text(QStringLiteral("mesa%1").arg(t.tabla)).trimmed() : "";
                out << QStringLiteral("%1T: ").arg(t.tabla) +
                           (esComprador(comprador) ? comprador + QStringLiteral("  ") + dinero(t.premio)
                                                   : QStringLiteral("-"));
            }
        }
    }
    return out;
}

QVector<QPair<QString, double>> jugadoPorComprador(Db& db, const QString& fecha, const QString& ch,
                                                   const DisenoSubasta& d) {
    QMap<QString, double> suma;
    for (const Row& r : db.query("select * FROM carreras_remate  where fecha= ? and ch= ? order by carrera, id_carrera",
                                 {fecha, ch}))
        for (int t : d.todasLasTablas()) {
            const QString m = r.text(QStringLiteral("mesa%1").arg(t)).trimmed();
            if (esComprador(m)) suma[m] += r.number(QStringLiteral("tabla%1").arg(t));
        }
    QVector<QPair<QString, double>> out;
    for (auto it = suma.cbegin(); it != suma.cend(); ++it) out.push_back({it.key(), it.value()});
    return out;
}

QStringList lineasJugado(const QVector<QPair<QString, double>>& jugado) {
    QStringList out;
    double total = 0;
    for (const auto& [comprador, monto] : jugado) {
        out << comprador.leftJustified(16, QLatin1Char(' ')) + dinero(monto);
        total += monto;
    }
    out << kRaya << QStringLiteral("Total: ") + dinero(total);
    return out;
}

void llenarReportesSubasta(Db& central, Db& local, const QString& fecha, const QString& ch,
                           const ParametrosSubasta& p, const DisenoSubasta& d) {
    const QString dia = fechaVista(fecha);
    struct Carrera {
        Recordset filas;
        LiquidacionCarrera tg, tp;
    };
    QVector<Carrera> carreras;
    const long long ultima = ultimaCarrera(central, fecha, ch);
    for (long long n = 1; n <= ultima; ++n) {
        Carrera c;
        c.filas = filasCarrera(central, fecha, n, ch);
        if (c.filas.empty()) continue;
        c.tg = liquidarCarrera(c.filas, d.grande, p.tablazo);
        if (d.dosSubastas()) c.tp = liquidarCarrera(c.filas, d.pequeno, p.tablazo);
        carreras.push_back(c);
    }
    const auto jugado = jugadoPorComprador(central, fecha, ch, d);
    local.inTransaction([&] {
        local.exec("DELETE from rpt_diarioremate");
        local.exec("DELETE from rpt_diariorematefinal");
        local.exec("DELETE from rpt_jugadores_remate");
        for (const Carrera& c : carreras) {
            // Per table of the board: its total and what its buyers play for.
            double total[6] = {}, premio[6] = {};
            for (const LiquidacionCarrera* l : {&c.tg, &c.tp})
                for (const TotalTabla& t : l->tablas) {
                    total[t.tabla] = t.total;
                    premio[t.tabla] = t.premio;
                }
            for (const Row& r : c.filas) {
                Params v{r.integer("nu_caballo"), c.tg.carrera, dia, r.text("caballo")};
                for (int t = 1; t <= 5; ++t) {
                    const QString m = r.text(QStringLiteral("mesa%1").arg(t));
                    const double monto = r.number(QStringLiteral("tabla%1").arg(t));
                    v.insert(v.end(), {monto, m, esCodigoCasa(m) ? monto : 0.0, total[t], premio[t]});
                }
                v.insert(v.end(), {c.tg.pote, c.tp.pote, r.number("porcentaje"), p.tablazo, c.tg.montoCasa,
                                   c.tp.montoCasa, c.tg.caballoCasa, ch, p.tablaz[1], p.tablaz[2], p.tablaz[3],
                                   p.tablaz[4], r.number("tablacasa"), r.number("tablacasa2")});
                local.exec("INSERT INTO rpt_diarioremate (numero, carrera, fecha, caballo, "
                           "tabla1, mesa1, casa1, t1, porfinal1, tabla2, mesa2, casa2, t2, porfinal2, "
                           "tabla3, mesa3, casa3, t3, porfinal3, tabla4, mesa4, casa4, t4, porfinal4, "
                           "tabla5, mesa5, casa5, t5, porfinal5, pote, pote2, porcentaje, tablazo, montocasa, "
                           "montocasa2, caballocasa, centrohipico, tablaz1, tablaz2, tablaz3, tablaz4, tablacasa, "
                           "tablacasa2) VALUES (?,?,?,?, ?,?,?,?,?, ?,?,?,?,?, ?,?,?,?,?, ?,?,?,?,?, ?,?,?,?,?, "
                           "?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
                           v);
            }
            local.exec("INSERT INTO rpt_diariorematefinal (carrera, fecha, venta, porcentaje, casanueve, premios, "
                       "monto_casa, tablazo, pote, ganancia, caballocasa, centrohipico, venta2, porcentaje2, "
                       "casanueve2, premios2, monto_casa2, tablazo2, pote2, ganancia2, caballocasa2, tab1gan, "
                       "tab2gan, tab3gan, tab4gan, tab5gan) VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
                       {c.tg.carrera, dia, c.tg.venta, c.tg.porcentaje, c.tg.casaJugado, c.tg.premios,
                        c.tg.montoCasa, c.tg.tablazo, c.tg.pote, c.tg.ganancia, c.tg.caballoCasa, ch, c.tp.venta,
                        c.tp.porcentaje, c.tp.casaJugado, c.tp.premios, c.tp.montoCasa, c.tp.tablazo, c.tp.pote,
                        c.tp.ganancia, c.tp.caballoCasa, premio[1], premio[2], premio[3], premio[4], premio[5]});
        }
        for (const auto& [comprador, monto] : jugado)
            local.exec("INSERT INTO rpt_jugadores_remate (jugador, monto) VALUES (?, ?)", {comprador, monto});
    });
}

}  // namespace hipico
