#include "admin/GerenciaEscritorio.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "core/Textos.h"

namespace hipico {

namespace {

const QString kTituloMensaje = QStringLiteral("Mensaje a las Taquillas");
const QString kTituloSupervisor = QStringLiteral("Supervisor de Tabla Fija");
constexpr int kLargoMensaje = 255;

}  // namespace

SwitchesGerencia GerenciaGrupo::switches() {
    SwitchesGerencia w;
    guardado([&] {
        const Recordset rs = db().query("select * from grupos where grupo= ?", {ctx_.session.grupo});
        if (rs.empty()) return;
        const Row& g = rs.first();
        w.admincupo = g.integerOr("admincupo", 0) != 0;
        w.admindiv = g.integerOr("admindiv", 0) != 0;
        w.gerenteEliminar = g.integerOr("gerente_eliminar", 0) != 0;
        w.visualBoletos = g.integerOr("visualboletosgerente", 0) != 0;
        w.pedirMotivo = g.integerOr("pedir_motivo", 0) != 0;
        w.permitirAnularTF = g.integerOr("permitiranulartf", 0) != 0;
        w.opcionCupoWin = int(g.integerOr("opcioncupowin", 0));
        w.noSumarRet = g.integerOr("nosumarret", 0) != 0;
        w.nuAdministrador = g.textOr("nu_administrador", {});
        w.nuTecnico = g.textOr("nu_tecnico", {});
        w.empateMin = g.numberOr("empatemin", 0);
        w.subgrupo = g.textOr("subgrupo", {});
    });
    return w;
}

GerenciaGrupo::VentasTaquillas GerenciaGrupo::ventasPorTaquilla(const Seleccion& s, long long hasta, bool todas) {
    VentasTaquillas v;
    guardado([&] {
        Params p{s.fecha};
        std::string sql = "select m.ch as taquilla ,sum(m.ganadores)*c.valor_ganador as venta,m.fecha FROM "
                          "ma_principal m,configuracion c where m.fecha =  ?" +
                          terminoAlcance(s.alcance, "m.grupo", p);
        if (s.grupoElegido()) {
            sql += " and m.grupo = ?";
            p.push_back(s.grupo);
        }
        if (!todas) {
            sql += " and m.carrera  between  ? and ?";
            p.push_back(s.carrera);
            p.push_back(std::max(hasta, s.carrera));
        }
        const Recordset rs = db().query(sql + " group by m.ch,m.fecha;", p);
        auto suma = [&](const char* estatus, const QString& taquilla) {
            Params q{taquilla, s.fecha};
            std::string t = terminoAlcance(s.alcance, "grupo", q);
            if (s.grupoElegido()) {
                t += " and grupo = ?";
                q.push_back(s.grupo);
            }
            return Row::toNumber(db().scalar(std::string("SELECT sum(cobrado) as monto FROM ma_principal where ") +
                                                 estatus + " and ch= ? and fecha  = ?" + t,
                                             q));
        };
        for (const Row& r : rs) {
            VentaTaquilla t{r.text("taquilla"), r.number("venta")};
            t.cobrado = suma("(estatus=2 OR estatus=3)", t.taquilla);
            t.porPagar = suma("(estatus=1 OR estatus=4)", t.taquilla);
            v.total.venta += t.venta;
            v.total.cobrado += t.cobrado;
            v.total.porPagar += t.porPagar;
            v.filas << t;
        }
    });
    return v;
}

QStringList GerenciaGrupo::lineasTaquillas(const VentasTaquillas& v) const {
    const bool dolar = ctx_.session.enDolares();
    auto linea = [&](const QString& nombre, const VentaTaquilla& t) {
        return QStringLiteral("%1%2%3%4")
            .arg(nombre, -20)
            .arg(formatoMonto(t.venta, dolar), 16)
            .arg(formatoMonto(t.cobrado, dolar), 16)
            .arg(formatoMonto(t.porPagar, dolar), 16);
    };
    QStringList out{QStringLiteral("%1%2%3%4").arg("TAQUILLA", -20).arg("VENTA", 16).arg("COBRADO", 16).arg("POR PAGAR", 16)};
    for (const VentaTaquilla& t : v.filas) out << linea(t.taquilla, t);
    out << QStringLiteral("------------------");
    out << linea(QStringLiteral("Total:"), v.total);
    return out;
}

QString GerenciaGrupo::delGrupo(const char* sql) {
    QString v;
    guardado([&] { v = Row::toText(db().scalar(sql, {ctx_.session.grupo})); });
    return v;
}

QString GerenciaGrupo::mensaje() { return delGrupo("select mensajech from grupos where grupo= ?"); }

bool GerenciaGrupo::escribirMensaje(const QString& texto, const QString& aviso) {
    const QString largo = textoDemasiadoLargo(QStringLiteral("EL MENSAJE"), texto, kLargoMensaje);
    if (!largo.isEmpty()) {
        ctx_.dialogs.refuse(kTituloMensaje, largo);
        return false;
    }
    return guardado([&] {
        db().exec("update  grupos set mensajech= ?  where grupo= ?", {texto, ctx_.session.grupo});
        ctx_.dialogs.inform(kTituloMensaje, aviso);
    });
}

bool GerenciaGrupo::guardarMensaje(const QString& texto) {
    return escribirMensaje(texto.trimmed(), texto::CambiosRealizados);
}

bool GerenciaGrupo::borrarMensaje() { return escribirMensaje(QString(), QStringLiteral("Mensaje Borrado")); }

QStringList GerenciaGrupo::supervisoresTF() {
    QStringList out{QStringLiteral("TODOS")};
    guardado([&] {
        for (const Row& r : db().query("select usuario from usuarios where grupo= ? and (nivel = 'Taquilla' or "
                                       "nivel = 'Total' or nivel = 'TablaFija') order by usuario",
                                       {ctx_.session.grupo}))
            out << r.text("usuario");
    });
    return out;
}

QString GerenciaGrupo::supervisorTF() { return delGrupo("select supervisorTF from grupos where grupo= ?"); }

bool GerenciaGrupo::guardarSupervisorTF(const QString& usuario) {
    if (!supervisoresTF().contains(usuario)) {
        ctx_.dialogs.refuse(kTituloSupervisor, texto::ValorNoValido);
        return false;
    }
    return guardado([&] {
        db().exec("update grupos set supervisorTF= ? where grupo= ?", {usuario, ctx_.session.grupo});
        ctx_.dialogs.inform(kTituloSupervisor, texto::CambiosRealizados);
    });
}

}  // namespace hipico
