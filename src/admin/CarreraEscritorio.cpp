#include "admin/CarreraEscritorio.h"

#include "core/CierreCarreras.h"
#include "core/Context.h"
#include "core/Diario.h"
#include "core/Formato.h"
#include "core/Textos.h"

#include <QLocale>

namespace hipico {

namespace {

const QString kTituloAnulacionCarrera = QStringLiteral("Anulacion de Carrera");
const QString kTituloAnulacionCaballo = QStringLiteral("Anulacion de Caballo");

}  // namespace

// ---------------------------------------------------------------- sales

VentasCarrera::VentasCaballos VentasCarrera::ventasPorCaballo(const Seleccion& s, Conteo conteo) {
    VentasCaballos v;
    guardado([&] {
        std::string sql = "SELECT caballo,sum(ganadores) as venta FROM ma_principal where carrera = ? and fecha  ";
        Params p{s.carrera, s.fecha};
        switch (conteo) {
        case Conteo::SinAnulados: sql += "like ? and estatus <> 5"; break;
        case Conteo::TerminoDevoluciones: sql += "= ? and (estatus<> 3 or estatus <> 4) "; break;
        case Conteo::Todos: sql += "= ?"; break;
        }
        sql += terminoAlcance(s.alcance, "grupo", p);
        if (s.grupoElegido()) {
            sql += " and grupo = ?";
            p.push_back(s.grupo);
        }
        if (conteo != Conteo::SinAnulados && s.centroElegido()) {
            sql += " and ch= ?";
            p.push_back(s.centro);
        }
        v.filas = db().query(sql + " group by caballo", p);
        for (const Row& r : v.filas) v.unidades += r.number("venta");
        v.monto = v.unidades * valorGanador();
        if (conteo == Conteo::SinAnulados) return;
        v.cerrada = Row::toInteger(db().scalar("SELECT count(*) FROM carreras where carrera = ? and fecha = ? "
                                               "and venta = 1",
                                               {s.carrera, s.fecha})) == 0;
        // The manager sees every horse of the race, sold or not.
        Params p2{s.carrera, s.fecha};
        std::string caballos = "SELECT caballo,nu_caballo FROM carreras  where carrera = ? and fecha  = ?";
        if (const auto id = idHipodromo(s, false)) {
            caballos += " and id_hipodromo = ?";
            p2.push_back(*id);
        }
        for (const Row& r : db().query(caballos + " order by nu_caballo", p2)) v.caballos << r.integer("nu_caballo");
    });
    return v;
}

QStringList VentasCarrera::lineasVentas(const VentasCaballos& v, const std::optional<Row>& cupos) const {
    QStringList out{QStringLiteral("        CABALLO          VENTA") + (cupos ? QStringLiteral("      CUPO") : QString())};
    const QLocale en(QLocale::English);
    QVector<long long> caballos = v.caballos;
    for (const Row& r : v.filas)
        if (!caballos.contains(r.integer("caballo"))) caballos << r.integer("caballo");
    for (const long long n : caballos) {
        const int i = v.filas.find(QStringLiteral("caballo"), QString::number(n));
        QString linea = QStringLiteral("%1%2").arg(n, 15).arg(en.toString(i < 0 ? 0.0 : v.filas[i].number("venta"), 'f', 0), 15);
        if (cupos) linea += QStringLiteral("%1").arg(cupos->textOr(QStringLiteral("cab%1").arg(n), QString()), 10);
        out << linea;
    }
    out << QStringLiteral("Venta en Gand:     ") + en.toString(v.unidades, 'f', 0);
    out << QStringLiteral("Venta en Bsf:     ") + formatoMonto(v.monto, ctx_.session.enDolares());
    if (v.cerrada) out << QStringLiteral("CERRADO");
    return out;
}

VentasCarrera::VentasDia VentasCarrera::ventasDelDia(const Seleccion& s) {
    VentasDia d;
    guardado([&] {
        auto suma = [&](const char* sql) {
            Params p{s.fecha};
            const std::string t = terminoAlcance(s.alcance, "grupo", p);
            return Row::toNumber(db().scalar(sql + t, p));
        };
        d.unidades = suma("SELECT sum(ganadores) as venta FROM ma_principal where estatus <> 5  and fecha  like ?");
        d.monto = d.unidades * valorGanador();
        d.cobrado = suma("SELECT sum(cobrado) as monto_cobrado FROM ma_principal where "
                         "(estatus=2 or estatus=3)  and fecha  like ?");
        d.cobradoYPorCobrar = suma("SELECT sum(cobrado) as monto_cobrado FROM ma_principal where "
                                   "(estatus=2 or estatus=3 or estatus=1 or estatus=4)  and fecha  like ?");
    });
    return d;
}

// ---------------------------------------------------------------- race card

Recordset TarjetaCarrera::listaCarrera(const Seleccion& s) {
    Recordset rs;
    guardado([&] {
        const auto id = idHipodromo(s, false);
        rs = id ? db().query("SELECT * FROM carreras Where carrera like ? and fecha like ? and id_hipodromo = ?  "
                             "order by id_carrera   ",
                             {s.carrera, s.fecha, *id})
                : db().query("SELECT * FROM carreras Where carrera like ? and fecha like ?  order by id_carrera   ",
                             {s.carrera, s.fecha});
    });
    return rs;
}

bool TarjetaCarrera::cambiarEstado(const Seleccion& s, long long idCarrera, int estado) {
    if (estado < 0 || estado > 2) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, QStringLiteral("EL ESTADO NO ES VALIDO"));
        return false;
    }
    return guardado([&] {
        db().exec("update carreras set estado= ? Where carrera like ? and fecha like ? and id_carrera = ?",
                  {estado, s.carrera, s.fecha, idCarrera});
    });
}

bool TarjetaCarrera::cambiarApuestaMax(const Seleccion& s, long long idCarrera, const QString& valor) {
    const auto v = monto(valor);
    if (!v) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, texto::MontoNoValido);
        return false;
    }
    return guardado([&] {
        db().exec("update carreras set apuesta_max_win= ? Where carrera like ? and fecha like ? and id_carrera = ?",
                  {*v, s.carrera, s.fecha, idCarrera});
    });
}

bool TarjetaCarrera::cambiarRetirado(const Seleccion& s, long long idCarrera, bool retirado) {
    return guardado([&] {
        Db& d = db();
        return d.inTransaction([&] {
            const Recordset fila = d.query("SELECT * FROM carreras Where carrera = ? and fecha = ? and id_carrera = ? "
                                           "FOR UPDATE",
                                           {s.carrera, s.fecha, idCarrera});
            if (fila.empty()) return false;
            const long long caballo = fila.first().integer("nu_caballo");
            if (retirado) {
                d.exec("update carreras set retirado=1 Where carrera = ? and fecha = ? and id_carrera = ?",
                       {s.carrera, s.fecha, idCarrera});
                d.exec("update carreras_remate set retirado=1,tabla1=0,mesa1='RET',tabla2=0,mesa2='RET',tabla3=0,"
                       "mesa3='RET',tabla4=0,mesa4='RET',tabla5=0,mesa5='RET',tablacasa=0,tablacasa2=0,invalidado=0,"
                       "invalidado2=0 Where carrera = ? and fecha = ? and nu_caballo = ?",
                       {s.carrera, s.fecha, caballo});
            } else {
                d.exec("update carreras set retirado=0 Where carrera = ? and fecha = ? and id_carrera = ?",
                       {s.carrera, s.fecha, idCarrera});
                d.exec("update carreras_remate set retirado=0 Where carrera = ? and fecha = ? and nu_caballo = ?",
                       {s.carrera, s.fecha, caballo});
                // The horse runs again: its open tickets (refunds not yet paid included) are sold tickets again.
                d.exec("update ma_principal set estatus=0,cobrado=0,llave6=0 Where carrera like ? and fecha = ? and "
                       "caballo = ? and estatus <> 2 and estatus <> 3",
                       {s.carrera, s.fecha, caballo});
                anotarPremios(d, s.fecha, s.carrera);
                d.exec("update descargas set cobrado=0 Where carrera = ? and fecha = ? and caballo = ?",
                       {s.carrera, s.fecha, caballo});
            }
            return true;
        });
    });
}

bool TarjetaCarrera::guardarCarrera(const Seleccion& s, bool abrir) {
    return guardado([&] {
        const auto id = idHipodromo(s, true);
        if (!id) return false;
        if (abrir) {
            const Recordset rs =
                db().query("SELECT *  FROM carreras  where carrera = ? and fecha  = ? and id_hipodromo = ?",
                           {s.carrera, s.fecha, *id});
            bool procesada = false;
            for (const Row& r : rs) procesada = procesada || r.number("dividendo") > 0;
            if (procesada && !ctx_.dialogs.confirm(texto::TituloVerifiqueProceso, texto::CarreraYaProcesadaAbrir, true,
                                                   Icon::Critical))
                return false;
        }
        db().exec("update carreras set venta= ? Where carrera = ? and fecha = ? and id_hipodromo = ?",
                  {abrir ? 1 : 0, s.carrera, s.fecha, *id});
        ctx_.dialogs.inform(texto::TituloAdministracionCarreras, texto::CambiosRealizados);
        return true;
    });
}

std::optional<TarjetaCarrera::Switches> TarjetaCarrera::switchesCarrera(const Seleccion& s) {
    std::optional<Switches> out;
    guardado([&] {
        const auto id = idHipodromo(s, false);
        if (!id) return;
        const Recordset rs = db().query("SELECT venta,venta_rm,venta_mc,venta_tf,estado_puestos FROM carreras where "
                                        "carrera = ? and fecha = ? and id_hipodromo = ? order by id_carrera limit 1",
                                        {s.carrera, s.fecha, *id});
        if (rs.empty()) return;
        const Row& r = rs.first();
        out = Switches{r.toInt("venta"), r.toInt("venta_rm"), r.toInt("venta_mc"), r.toInt("venta_tf"),
                       r.toInt("estado_puestos")};
    });
    return out;
}

bool TarjetaCarrera::guardarSwitches(const Seleccion& s, const Switches& sw) {
    return guardado([&] {
        const auto id = idHipodromo(s, true);
        if (!id) return false;
        auto flag = [](int v) { return v != 0 ? 1 : 0; };
        // A switch turned off closes row by row first (see cerrarFilaPorFila).
        escribirCarreras(db(), "estado_puestos= ?,venta= ?,venta_rm= ?,venta_mc= ?,venta_tf= ?",
                         {flag(sw.puestos), flag(sw.ganadores), flag(sw.remate), flag(sw.macuare), flag(sw.tablaFija)},
                         "carrera = ? and fecha = ? and id_hipodromo = ?", {s.carrera, s.fecha, *id},
                         !sw.ganadores || !sw.remate || !sw.macuare || !sw.tablaFija);
        ctx_.dialogs.inform(texto::TituloAdministracionCarreras, texto::CambiosRealizados);
        return true;
    });
}

// ---------------------------------------------------------------- result

std::optional<ResultadoProceso> ResultadoCarrera::procesar(const Seleccion& s, const QString& ganador,
                                                           const QString& dividendo, const QString& ganador2,
                                                           const QString& dividendo2, bool pagarOficial) {
    std::optional<ResultadoProceso> resultado;
    guardado([&] {
        const auto id = idHipodromo(s, true);
        if (!id) return;
        // The official dividends ("," or "." as decimal point).
        const bool empate = !ganador2.trimmed().isEmpty();
        const auto d1 = monto(dividendo);
        const auto d2 = empate ? monto(dividendo2) : std::optional<double>(0.0);
        if (!d1 || *d1 <= 0 || !d2 || (empate && *d2 <= 0)) {
            ctx_.dialogs.refuse(texto::TituloValidacionDatos, QStringLiteral("EL DIVIDENDO NO ES VALIDO"));
            return;
        }
        // A processed race is processed again only when the administrator says so.
        const Recordset procesada =
            db().query("SELECT *  FROM carreras  where carrera = ? and fecha  = ? and dividendo > 0 and "
                       "id_hipodromo  = ?",
                       {s.carrera, s.fecha, *id});
        if (!procesada.empty() &&
            !ctx_.dialogs.confirm(texto::TituloVerifiqueProceso,
                                  QStringLiteral("Esta carrera ya fue procesada, ¿Desea hacerlo de nuevo?")))
            return;
        // The winners: running horses of the race.
        auto corre = [&](const QString& texto) -> std::optional<long long> {
            const auto n = leerEntero(texto);
            if (!n || *n == 0) return std::nullopt;
            const long long c = Row::toInteger(db().scalar(
                "SELECT count(*) FROM carreras where carrera = ? and fecha = ? and nu_caballo = ? and "
                "id_hipodromo = ? and retirado = 0",
                {s.carrera, s.fecha, *n, *id}));
            if (c == 0) return std::nullopt;
            return n;
        };
        const auto g1 = corre(ganador);
        const auto g2 = empate ? corre(ganador2) : std::optional<long long>(0);
        if (!g1 || !g2 || (empate && *g1 == *g2)) {
            ctx_.dialogs.refuse(texto::TituloValidacionDatos, QStringLiteral("DEBE COLOCAR UN Nº CABALLO VALIDO"));
            return;
        }
        PeticionProceso p;
        p.fecha = s.fecha;
        p.carrera = s.carrera;
        p.idHipodromo = *id;
        p.centro = s.centro;
        p.ganadores << GanadorOficial{*g1, *d1};
        if (empate) p.ganadores << GanadorOficial{*g2, *d2};
        p.pagarOficial = pagarOficial;
        p.porHipodromo = porHipodromo();
        resultado = procesarCarrera(db(), p);
        ctx_.dialogs.inform(kTituloAplicacion, QStringLiteral("CARRERA PROCESADA CON EXITO"));
    });
    return resultado;
}

bool ResultadoCarrera::limpiarCarrera(const Seleccion& s, const QString& pregunta, const QString& titulo,
                                      const char* sql) {
    return guardado([&] {
        if (!ctx_.dialogs.confirm(pregunta, QStringLiteral("Desea limpiar la carrera"), true)) return false;
        db().inTransaction([&] {
            Params p{s.carrera, s.fecha};
            const std::string t = terminoAlcance(s.alcance, "grupo", p);
            db().exec(sql + t, p);
            anotarPremios(db(), s.fecha, s.carrera);
        });
        ctx_.dialogs.inform(titulo, QStringLiteral("SE HA LIMPIADO LA CARRERA  CON EXITO"));
        return true;
    });
}

bool ResultadoCarrera::limpiar(const Seleccion& s) {
    return limpiarCarrera(s, QStringLiteral("Limpieza de Carrera"), texto::TituloAdministracionCarreras,
                          "update ma_principal set estatus=0,cobrado=0,llave3=0,llave4=0,llave6=0  where carrera = ? "
                          "and fecha  = ? and estatus <> 4 and estatus<> 3 and estatus <> 2  ");
}

bool ResultadoCarrera::limpiarDividendos(const Seleccion& s) {
    const QString titulo = QStringLiteral("DIVIDENDOS");
    return limpiarCarrera(s, titulo, titulo,
                          "update ma_principal set estatus=0,cobrado=0 where carrera = ? and fecha  = ? and "
                          "estatus <> 4 and estatus<> 3 and estatus <> 2  ");
}

bool ResultadoCarrera::anular(const Seleccion& s) {
    return guardado([&] {
        if (!ctx_.dialogs.confirm(kTituloAnulacionCarrera, QStringLiteral("Desea anular la carrera"), true))
            return false;
        devolverBoletos(db(), s.fecha, s.carrera, s.grupo, 0, valorGanador());
        ctx_.dialogs.inform(kTituloAnulacionCarrera, texto::CambiosRealizados);
        return true;
    });
}

bool ResultadoCarrera::retirarCaballo(const Seleccion& s, const QString& caballo) {
    const auto n = leerEntero(caballo);
    if (!n || *n == 0) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, texto::CaballoNoValido);
        return false;
    }
    return guardado([&] {
        if (!ctx_.dialogs.confirm(kTituloAnulacionCaballo, QStringLiteral("Desea retirar el caballo"), true))
            return false;
        devolverBoletos(db(), s.fecha, s.carrera, s.grupo, *n, valorGanador());
        ctx_.dialogs.inform(kTituloAnulacionCaballo, texto::CambiosRealizados);
        return true;
    });
}

bool ResultadoCarrera::devolverCuatroCaballos(const Seleccion& s) {
    if (!s.grupoElegido()) {
        ctx_.dialogs.refuse(kTituloAnulacionCarrera, texto::DebeSeleccionarGrupo);
        return false;
    }
    return guardado([&] {
        if (!ctx_.dialogs.confirm(kTituloAnulacionCarrera, QStringLiteral("Desea devolver la jugada con 4 caballos?"),
                                  true))
            return false;
        const double vr2 = Row::toNumber(db().scalar("SELECT `4cabvr2` FROM grupos where grupo = ?", {s.grupo}));
        if (vr2 != -1) {
            ctx_.dialogs.refuse(kTituloAnulacionCarrera,
                                QStringLiteral("EL GRUPO NO DEVUELVE LAS JUGADAS CON 4 CABALLOS"));
            return false;
        }
        devolverBoletos(db(), s.fecha, s.carrera, s.grupo, 0, valorGanador());
        ctx_.dialogs.inform(kTituloAnulacionCarrera, texto::CambiosRealizados);
        return true;
    });
}

}  // namespace hipico
