#include "admin/ProcesoMacuare.h"

#include "admin/Escritorio.h"

#include "core/CierreCarreras.h"
#include "core/Context.h"
#include "core/Db.h"
#include "core/Guardia.h"
#include "core/Textos.h"
#include "schema/Escritores.h"

#include <QSet>
#include <algorithm>
#include <cmath>

namespace hipico {

namespace {

const QString kVentanaAdminMC = QStringLiteral("form_Admin_MC");
const QString kTituloMacuare = QStringLiteral("ADMINISTRACION DE MACUARE");
const QString kConVentas = QStringLiteral("YA HAY BOLETOS VENDIDOS, NO SE PUEDEN CAMBIAR LAS CARRERAS DEL MACUARE");
const QString kFaltanGanadores = QStringLiteral("FALTAN GANADORES: LAS SIETE CARRERAS DEBEN TENER SU GANADOR");
const QString kDatoNoValido = QStringLiteral("LOS DATOS DEL MACUARE NO SON VALIDOS");
// Up to three winners in a dead heat (c<leg>_1 .. c<leg>_3).
constexpr int kEmpates = 3;

const char* const kBloquearDia = "SELECT id FROM macuare_dias WHERE fecha = ? FOR UPDATE";
const char* const kCrearDia = "INSERT IGNORE INTO macuare_dias (fecha) VALUES (?)";
const char* const kBloquearGanadores = "SELECT * FROM caballos_ganadores WHERE fecha = ? ORDER BY id LIMIT 1 FOR UPDATE";
const char* const kLeerGanadores = "SELECT * FROM caballos_ganadores WHERE fecha = ? ORDER BY id LIMIT 1";
const char* const kCorredoresPierna =
    "SELECT nu_caballo, retirado, favorito FROM carreras WHERE fecha = ? and id_hipodromo = ? and carrera = ? "
    "ORDER BY nu_caballo";
// A winner paid stays paid (2); due winners go back to 0.
const char* const kDeshacer = "UPDATE macuares SET estatus=0, cobrado=0 WHERE fecha = ? and estatus = 1";
const char* const kVentaDia = "SELECT COALESCE(sum(monto * veces), 0) FROM macuares WHERE fecha = ?";
const char* const kArrastre =
    "SELECT arrastre_siguiente FROM macuare_dias WHERE fecha < ? and procesado = 1 ORDER BY fecha DESC LIMIT 1";
const char* const kGuardarLiquidacion =
    "UPDATE macuare_dias SET venta=?, arrastre=?, pozo=?, boletos_ganadores=?, arrastre_siguiente=?, procesado=? "
    "WHERE fecha = ?";
const char* const kLiquidacion =
    "SELECT venta, arrastre, pozo, boletos_ganadores, arrastre_siguiente, porcentaje_casa, procesado FROM "
    "macuare_dias WHERE fecha = ?";
double centavos(double x) { return std::round(x * 100) / 100; }

// The day's sales, the house share, what was carried in, and the pool they make.
void pozoDe(Db& db, const DiaMacuare& d, Liquidacion& l) {
    l.venta = Row::toNumber(db.scalar(kVentaDia, {d.fecha}));
    l.casa = centavos(l.venta * d.porcentajeCasa / 100);
    l.arrastre = Row::toNumber(db.scalar(kArrastre, {d.fecha}));
    l.pozo = centavos(l.venta - l.casa + l.arrastre);
}

}  // namespace

std::string condicionAciertos(const GanadoresDia& a, Params& params) {
    std::string s;
    for (int i = 0; i < kPiernas; ++i) {
        if (a[i].isEmpty()) continue;
        s += " and v" + std::to_string(i + 1) + " IN (";
        for (int k = 0; k < a[i].size(); ++k) {
            s += k ? ",?" : "?";
            params.push_back(a[i][k]);
        }
        s += ")";
    }
    return s;
}

DiaMacuare ProcesoMacuare::dia(const QString& fecha) {
    DiaMacuare d = diaMacuare(ctx_.servidor(), fecha);
    if (!d.existe) d.porcentajeCasa = 20;
    return d;
}

DiaMacuare ProcesoMacuare::bloquearDia(Db& db, const QString& fecha) {
    db.exec(kCrearDia, {fecha});
    db.query(kBloquearDia, {fecha});
    return diaMacuare(db, fecha);
}

bool ProcesoMacuare::configurar(const QString& fecha, long long hipodromo, long long carrera1, double porcentaje) {
    if (hipodromo < 0 || carrera1 < 1 || carrera1 > 100 || !(porcentaje >= 0) || porcentaje > 100) {
        ctx_.dialogs.refuse(kTituloMacuare, kDatoNoValido);
        return false;
    }
    const auto r = intentar(ctx_, kVentanaAdminMC, [&] {
        Db& db = ctx_.servidor();
        return db.inTransaction([&] {
            bloquearDia(db, fecha);
            if (Row::toInteger(db.scalar("SELECT count(*) FROM macuares WHERE fecha = ?", {fecha})) > 0) return false;
            db.exec("UPDATE macuare_dias SET id_hipodromo = ?, carrera1 = ?, porcentaje_casa = ? WHERE fecha = ?",
                    {hipodromo, carrera1, porcentaje, fecha});
            return true;
        });
    });
    if (!r) return false;
    if (!*r) {
        ctx_.dialogs.refuse(kTituloMacuare, kConVentas);
        return false;
    }
    ctx_.dialogs.inform(kTituloMacuare, texto::CambiosRealizados);
    return true;
}

bool ProcesoMacuare::abrir(const QString& fecha, bool abierto) {
    return proteger(ctx_, kVentanaAdminMC, [&] {
        Db& db = ctx_.servidor();
        if (!abierto) {
            // Row by row first (see cerrarFilaPorFila): the sales write their first leg's rows.
            const DiaMacuare d = diaMacuare(db, fecha);
            cerrarFilaPorFila(db, "venta_mc = ?", {0}, "fecha = ? and id_hipodromo = ? and carrera between ? and ?",
                              {fecha, d.hipodromo, d.carrera(0), d.carrera(kPiernas - 1)});
        }
        db.inTransaction([&] {
            const DiaMacuare d = bloquearDia(db, fecha);
            const int v = abierto ? 1 : 0;
            db.exec("UPDATE configuracion SET venta_macuare = ?", {v});
            db.exec("UPDATE carreras SET venta_mc = ? WHERE fecha = ? and id_hipodromo = ? and carrera between ? and ?",
                    {v, fecha, d.hipodromo, d.carrera(0), d.carrera(kPiernas - 1)});
        });
        ctx_.dialogs.inform(kTituloMacuare, texto::CambiosRealizados);
    });
}

GanadoresDia ProcesoMacuare::leerGanadores(Db& db, const QString& fecha) {
    GanadoresDia g;
    const Recordset rs = db.query(kLeerGanadores, {fecha});
    if (rs.empty()) return g;
    for (int i = 0; i < kPiernas; ++i)
        for (int k = 1; k <= kEmpates; ++k) {
            const long long n = rs.first().integer(QStringLiteral("c%1_%2").arg(i + 1).arg(k));
            if (n > 0) g[i] << n;
        }
    return g;
}

GanadoresDia ProcesoMacuare::ganadores(const QString& fecha) { return leerGanadores(ctx_.servidor(), fecha); }

GanadoresDia ProcesoMacuare::aciertos(Db& db, const DiaMacuare& d, const GanadoresDia& g) {
    GanadoresDia a;
    for (int i = 0; i < kPiernas; ++i) {
        a[i] = g[i];
        if (g[i].isEmpty()) continue;
        QVector<long long> retirados;
        long long favorito = 0, menor = 0;
        for (const Row& r : db.query(kCorredoresPierna, {d.fecha, d.hipodromo, d.carrera(i)})) {
            const long long n = r.integer("nu_caballo");
            if (r.integer("retirado") != 0) {
                retirados << n;
                continue;
            }
            if (menor == 0) menor = n;
            if (favorito == 0 && r.integer("favorito") != 0) favorito = n;
        }
        const long long sustituto = favorito ? favorito : menor;
        if (sustituto && g[i].contains(sustituto))
            for (long long n : retirados)
                if (!a[i].contains(n)) a[i] << n;
    }
    return a;
}

void ProcesoMacuare::deshacer(Db& db, const QString& fecha) {
    db.exec(kDeshacer, {fecha});
    db.exec(kGuardarLiquidacion, {0.0, 0.0, 0.0, 0, 0.0, 0, fecha});
}

Liquidacion ProcesoMacuare::liquidarBloqueado(Db& db, const DiaMacuare& d, const GanadoresDia& g) {
    Liquidacion l;
    if (std::any_of(g.begin(), g.end(), [](const QVector<long long>& p) { return p.isEmpty(); })) {
        // A leg without winners: a settled day is undone; one never settled has nothing to undo.
        if (Row::toInteger(db.scalar("SELECT procesado FROM macuare_dias WHERE fecha = ?", {d.fecha})) == 1)
            deshacer(db, d.fecha);
        return l;
    }
    l.hecha = true;
    db.exec(kDeshacer, {d.fecha});
    pozoDe(db, d, l);

    Params params{d.fecha};
    const std::string aciertan = condicionAciertos(aciertos(db, d, g), params);
    const Row w = db.query("SELECT count(*) AS n, COALESCE(sum(monto * veces), 0) AS peso FROM macuares WHERE fecha = ?" +
                               aciertan,
                           params)
                      .first();
    l.ganadores = w.integer("n");
    l.peso = w.number("peso");
    if (l.ganadores > 0 && l.peso > 0) {
        // Each share cut down to the cent: the sum never passes the pool.
        Params p{l.pozo, l.peso};
        p.insert(p.end(), params.begin(), params.end());
        db.exec("UPDATE macuares SET estatus = 1, cobrado = TRUNCATE(? * monto * veces / ? + 0.0000001, 2) WHERE "
                "fecha = ? and estatus = 0" +
                    aciertan,
                p);
        l.repartido = Row::toNumber(
            db.scalar("SELECT COALESCE(sum(cobrado), 0) FROM macuares WHERE fecha = ? and (estatus = 1 or estatus = 2)",
                      {d.fecha}));
    } else {
        l.arrastreSiguiente = l.pozo;
    }
    db.exec(kGuardarLiquidacion, {l.venta, l.arrastre, l.pozo, l.ganadores, l.arrastreSiguiente, 1, d.fecha});
    return l;
}

std::optional<Liquidacion> ProcesoMacuare::fijarGanadores(const QString& fecha, int pierna,
                                                          const QVector<long long>& caballos) {
    if (pierna < 0 || pierna >= kPiernas || caballos.size() > kEmpates) {
        ctx_.dialogs.refuse(texto::TituloValidacionDatos, texto::ColocarCaballoValido);
        return std::nullopt;
    }
    struct Hecho {
        bool valido = true;
        Liquidacion l;
    };
    const auto r = intentar(ctx_, kVentanaAdminMC, [&] {
        Db& db = ctx_.servidor();
        return db.inTransaction([&]() -> Hecho {
            const DiaMacuare d = bloquearDia(db, fecha);
            // Every winner a runner of the leg's race, not scratched, none twice.
            QSet<long long> corren;
            for (const Row& c : db.query(kCorredoresPierna, {fecha, d.hipodromo, d.carrera(pierna)}))
                if (c.integer("retirado") == 0) corren.insert(c.integer("nu_caballo"));
            QSet<long long> vistos;
            for (long long n : caballos) {
                if (!corren.contains(n) || vistos.contains(n)) return {false, {}};
                vistos.insert(n);
            }
            if (db.query(kBloquearGanadores, {fecha}).empty())
                db.exec("INSERT INTO caballos_ganadores (fecha) VALUES (?)", {fecha});
            const std::string p = std::string("c").append(std::to_string(pierna + 1)).append("_");
            db.exec("UPDATE caballos_ganadores SET " + p + "1 = ?, " + p + "2 = ?, " + p + "3 = ? WHERE fecha = ?",
                    {caballos.value(0), caballos.value(1), caballos.value(2), fecha});
            return {true, liquidarBloqueado(db, d, leerGanadores(db, fecha))};
        });
    });
    if (!r) return std::nullopt;
    if (!r->valido) {
        ctx_.dialogs.refuse(texto::TituloValidacionDatos, texto::ColocarCaballoValido);
        return std::nullopt;
    }
    return r->l;
}

std::optional<Liquidacion> ProcesoMacuare::liquidar(const QString& fecha) {
    const auto r = intentar(ctx_, kVentanaAdminMC, [&] {
        Db& db = ctx_.servidor();
        return db.inTransaction([&] {
            const DiaMacuare d = bloquearDia(db, fecha);
            return liquidarBloqueado(db, d, leerGanadores(db, fecha));
        });
    });
    if (!r) return std::nullopt;
    if (!r->hecha) {
        ctx_.dialogs.refuse(kTituloMacuare, kFaltanGanadores);
        return std::nullopt;
    }
    return r;
}

std::optional<Liquidacion> ProcesoMacuare::liquidacion(const QString& fecha) {
    const Recordset rs = ctx_.servidor().query(kLiquidacion, {fecha});
    if (rs.empty() || rs.first().integer("procesado") != 1) return std::nullopt;
    const Row& r = rs.first();
    Liquidacion l;
    l.hecha = true;
    l.venta = r.number("venta");
    l.casa = centavos(l.venta * r.number("porcentaje_casa") / 100);
    l.arrastre = r.number("arrastre");
    l.pozo = r.number("pozo");
    l.ganadores = r.integer("boletos_ganadores");
    l.arrastreSiguiente = r.number("arrastre_siguiente");
    return l;
}

double ProcesoMacuare::pozoHastaAhora(const QString& fecha) {
    Liquidacion l;
    pozoDe(ctx_.servidor(), dia(fecha), l);
    return l.pozo;
}

QVector<VivosGrupo> ProcesoMacuare::vivos(const QString& fecha) {
    Db& db = ctx_.servidor();
    const DiaMacuare d = diaMacuare(db, fecha);
    Params params{fecha};
    const std::string aciertan = condicionAciertos(aciertos(db, d, leerGanadores(db, fecha)), params);
    QVector<VivosGrupo> v;
    for (const Row& r : db.query("SELECT grupo, count(*) AS boletos, count(distinct combinacion) AS combinaciones, "
                                 "COALESCE(sum(monto * veces), 0) AS monto FROM macuares WHERE fecha = ?" +
                                     aciertan + " GROUP BY grupo ORDER BY grupo",
                                 params))
        v.push_back({r.text("grupo"), r.integer("boletos"), r.integer("combinaciones"), r.number("monto")});
    return v;
}

// ---------------------------------------------------------------- single tickets

namespace {

const QString kTituloAdmin = QStringLiteral("ADMINISTRACION DEL SISTEMA");

}  // namespace

bool ProcesoMacuare::anularBoleto(const Alcance& alcance) {
    const auto codigo = ctx_.dialogs.ask(texto::TituloAnulacionMacuares, QStringLiteral("INGRESE EL CODIGO DEL BOLETO DEL MACUARE"));
    if (!codigo || codigo->trimmed().isEmpty()) return false;
    ReglasAnulacion r;
    r.codigo = codigo->trimmed();
    r.soloVendidos = true;
    r.dentro = dentroDe(alcance);
    const auto hecho = intentar(ctx_, kVentanaAdminMC, [&] {
        Db& db = ctx_.servidor();
        const Recordset rs = db.query("SELECT numero FROM macuares Where boleto= ?", {r.codigo});
        if (rs.empty()) return ResultadoAnulacion::NoEncontrado;
        return anular(db, juegoMacuare(), rs.first().integer("numero"), r, texto::MotivoAnulado, ctx_.session.usuario);
    });
    if (!hecho) return false;
    switch (*hecho) {
    case ResultadoAnulacion::Anulado: ctx_.dialogs.inform(texto::TituloAnulacionMacuares, texto::BoletoAnulado); return true;
    case ResultadoAnulacion::Cerrado: ctx_.dialogs.refuse(texto::TituloAnulacionMacuares, texto::CarreraCerradaSinCambios); break;
    default: ctx_.dialogs.refuse(texto::TituloAnulacionMacuares, texto::BoletoNoAnulable); break;
    }
    return false;
}

bool ProcesoMacuare::pagarBoleto(const QString& codigo) {
    const auto motivo = ctx_.dialogs.ask(QStringLiteral("MOTIVO DEL CAMBIO"), texto::IngreseMotivo,
                                         QStringLiteral("COBRADO"));
    if (!motivo || motivo->trimmed().isEmpty() || !motivoCabe(ctx_, motivo->trimmed())) return false;
    const auto hecho = intentar(ctx_, kVentanaAdminMC, [&] {
        Db& db = ctx_.servidor();
        return db.inTransaction([&] {
            const Recordset rs = db.query("SELECT numero FROM macuares Where boleto = ?", {codigo.trimmed()});
            const std::optional<Row> b =
                rs.empty() ? std::nullopt : bloquearBoleto(db, juegoMacuare(), rs.first().integer("numero"));
            if (!b || estatusDe(*b) != Estatus::Ganador) return false;
            const double monto = b->number("cobrado");
            db.exec("update macuares set estatus=2,fecha_cobro=fecha Where numero = ? and estatus = 1 limit 1",
                    {b->integer("numero")});
            insertar(db, anotacionMacuare(*b, motivo->trimmed(), ctx_.session.usuario, numeroDe(Estatus::Pagado)));
            db.exec("INSERT IGNORE INTO ventas_mc_general (grupo, fecha) VALUES (?, ?)", {b->text("grupo"), b->text("fecha")});
            db.exec("Update ventas_mc_general set premios=premios + ?,saldo=saldo - ?,monto_porpagar=monto_porpagar - ? "
                    "Where fecha = ? and grupo = ? limit 1",
                    {monto, monto, monto, b->text("fecha"), b->text("grupo")});
            return true;
        });
    });
    if (!hecho) return false;
    if (!*hecho) {
        ctx_.dialogs.refuse(kTituloAdmin, texto::BoletoNoGanador);
        return false;
    }
    ctx_.dialogs.inform(kTituloAdmin, QStringLiteral("BOLETO COBRADO CON EXITO"));
    return true;
}

const QStringList& ProcesoMacuare::clasesBusqueda() {
    static const QStringList c{QStringLiteral("TODAS"), QStringLiteral("PAGADOS"), QStringLiteral("POR PAGAR"),
                               QStringLiteral("NO GANADORES")};
    return c;
}

Recordset ProcesoMacuare::buscarBoletos(const QString& fecha, const QString& grupo, const QString& clase) {
    std::string sql =
        "SELECT numero, boleto, hora, combinacion, monto, veces, cobrado, estatus, taquilla, grupo, nombre FROM "
        "macuares WHERE fecha = ?";
    Params p{fecha};
    if (grupo != texto::Todos) {
        sql += " and grupo = ?";
        p.push_back(grupo);
    }
    if (clase == QLatin1String("PAGADOS")) sql += " and estatus = 2";
    if (clase == QLatin1String("POR PAGAR")) sql += " and estatus = 1";
    if (clase == QLatin1String("NO GANADORES")) sql += " and estatus = 0";
    return ctx_.servidor().query(sql + " order by numero desc", p);
}

}  // namespace hipico
