#include "sales/CuadreTaquillas.h"

#include "core/Context.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "core/Guardia.h"
#include "core/Niveles.h"
#include "core/Textos.h"
#include "core/Openers.h"
#include "sales/AjustesLocales.h"
#include "schema/Escritores.h"

#include <algorithm>

namespace hipico {

namespace {

const QString kVentana = QStringLiteral("Form_RPT_CuadreTaqWIn");
const QString kTodos = QStringLiteral("TODOS");

// The statements for one source table: the day's tickets or the group copy.
struct Fuente {
    const char* ventaGrupo;
    const char* ventaCentro;
    const char* ventaTodos;
    const char* cobrado;
    const char* porPagar;
};

const Fuente kDelDia{
    "select m.ch as taquilla ,sum(m.ganadores)*c.valor_ganador as venta,m.fecha FROM ma_principal m,configuracion c "
    "where m.fecha =  ? and m.grupo = ?  group by m.ch,m.fecha;",
    "select m.ch as taquilla ,sum(m.ganadores)*c.valor_ganador as venta,m.fecha FROM ma_principal m,configuracion c "
    "where m.fecha =  ? and m.ch = ?  group by m.ch,m.fecha;",
    "select m.ch as taquilla ,sum(m.ganadores)*c.valor_ganador as venta,m.fecha FROM ma_principal m,configuracion c "
    "where m.fecha =  ?  group by m.ch,m.fecha;",
    "SELECT sum(cobrado) as monto_cobrado FROM ma_principal where (estatus=2 OR estatus=3) and ch=? and fecha = ? "
    "and (grupo = ? or ? = '')",
    "SELECT sum(cobrado) as monto_porpagar FROM ma_principal where (estatus=1 OR estatus=4) and ch=? and fecha = ? "
    "and (grupo = ? or ? = '')",
};

const Fuente kCopiaGrupo{
    "select m.ch as taquilla ,sum(m.ganadores)*c.valor_ganador as venta,m.fecha FROM ventas_ganadores m,configuracion "
    "c where m.fecha =  ? and m.grupo = ?  group by m.ch,m.fecha;",
    "select m.ch as taquilla ,sum(m.ganadores)*c.valor_ganador as venta,m.fecha FROM ventas_ganadores m,configuracion "
    "c where m.fecha =  ? and m.ch = ?  group by m.ch,m.fecha;",
    "select m.ch as taquilla ,sum(m.ganadores)*c.valor_ganador as venta,m.fecha FROM ventas_ganadores m,configuracion "
    "c where m.fecha =  ?  group by m.ch,m.fecha;",
    "SELECT sum(cobrado) as monto_cobrado FROM ventas_ganadores where (estatus=2 OR estatus=3) and ch=? and fecha = "
    "? and (grupo = ? or ? = '')",
    "SELECT sum(cobrado) as monto_porpagar FROM ventas_ganadores where (estatus=1 OR estatus=4) and ch=? and fecha = "
    "? and (grupo = ? or ? = '')",
};

}  // namespace

QStringList CuadreTaquillas::grupos() {
    const Session& s = ctx_.session;
    if (!esNivelDireccion(s.nivel) && !esNivelSupervision(s.nivel)) return {s.grupo};
    QStringList out{kTodos};
    const Recordset rs = esNivelDireccion(s.nivel)
                             ? ctx_.servidor().query("SELECT grupo FROM grupos ORDER BY grupo")
                             : ctx_.servidor().query("SELECT grupo FROM grupos WHERE ch = ? ORDER BY grupo", {s.ch});
    for (const Row& r : rs) out << r.text("grupo");
    return out;
}

QVector<CuadreTaquillas::Fila> CuadreTaquillas::buscar(const QDate& dia, const QString& grupoElegido, bool avisar) {
    const Session& s = ctx_.session;
    const QString fecha = fechaSql(dia);
    const Fuente& f = fecha == s.fecha ? kDelDia : kCopiaGrupo;
    QVector<Fila> filas;
    const bool hecho = proteger(ctx_, kVentana, [&] {
        // A group outside the user's choices is the user's own.
        const QString grupo = grupos().contains(grupoElegido) ? grupoElegido : s.grupo;
        Db& db = ctx_.servidor();
        Recordset ventas;
        if (grupo != kTodos) ventas = db.query(f.ventaGrupo, {fecha, grupo});
        else if (esNivelDireccion(s.nivel)) ventas = db.query(f.ventaTodos, {fecha});
        else ventas = db.query(f.ventaCentro, {fecha, s.ch});
        const QString filtroGrupo = grupo == kTodos ? QString() : grupo;
        for (const Row& v : ventas) {
            Fila fila;
            fila.taquilla = v.text("taquilla");
            fila.fecha = fechaVista(v.text("fecha"));
            fila.jugado = v.number("venta");
            fila.cobrado = Row::toNumber(db.scalar(f.cobrado, {fila.taquilla, fecha, filtroGrupo, filtroGrupo}));
            fila.porPagar = Row::toNumber(db.scalar(f.porPagar, {fila.taquilla, fecha, filtroGrupo, filtroGrupo}));
            fila.total = fila.jugado - fila.cobrado - fila.porPagar;
            filas << fila;
        }
        std::sort(filas.begin(), filas.end(), [](const Fila& a, const Fila& b) { return a.taquilla < b.taquilla; });
        if (auto local = conexionLocalDisponible(ctx_)) {
            local->inTransaction([&] {
                local->exec("DELETE from rpt_resultadostaqs");
                for (const Fila& x : filas)
                    insertar(*local, resultadoTaquilla(x.taquilla, x.fecha, x.jugado, x.cobrado, x.total, x.porPagar));
            });
            if (ctx_.cnLocal) AbrirRptResultadosTaqs(ctx_);
        }
    });
    if (!hecho) return {};
    if (filas.isEmpty() && avisar) ctx_.dialogs.inform(texto::TituloBusqueda, texto::SinRegistros);
    return filas;
}

}  // namespace hipico
