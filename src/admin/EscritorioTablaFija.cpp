#include "admin/EscritorioTablaFija.h"

#include "admin/ProcesoCarrera.h"
#include "core/CierreCarreras.h"
#include "core/Context.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "core/Textos.h"
#include "sales/JuegoTablaFija.h"

namespace hipico {

namespace {

const QString kTituloProceso = QStringLiteral("VERIFIQUE EL PROCESO");
const QString kCaballoNoValido = QStringLiteral("DEBE COLOCAR UN Nº CABALLO VALIDO");
const QString kSinPremio = QStringLiteral("DEBE FIJAR EL PREMIO DE LA TABLA FIJA");

const char* const kFilasCarrera =
    "SELECT id_carrera, nu_caballo, caballo, valor_tf, retirado_tf, apuesta_max_tf, venta_tf, bloqueotf, estado_tf "
    "FROM carreras WHERE fecha = ? and carrera = ? and id_hipodromo = ? ORDER BY id_carrera";

}  // namespace

ProcesoTablaFija procesarTablaFija(Db& db, const QString& fecha, long long carrera, long long idHipodromo,
                                   long long ganador) {
    return db.inTransaction([&] {
        ProcesoTablaFija r;
        // The race's rows first, in key order as the sale takes them.
        db.query(std::string(kFilasCarrera) + " FOR UPDATE", {fecha, carrera, idHipodromo});
        r.premio = Row::toNumber(db.scalar("SELECT valortablafija FROM configuracion"));
        db.exec("update tablafija set estatus=0,cobrado=0 where carrera=? and fecha=? and (estatus=1 or estatus=4)",
                {carrera, fecha});
        r.devoluciones = db.exec(
            "update tablafija set estatus=4,cobrado=monto where carrera=? and fecha=? and estatus=0 and caballo in "
            "(SELECT nu_caballo FROM carreras WHERE fecha=? and carrera=? and id_hipodromo=? and retirado_tf=1)",
            {carrera, fecha, fecha, carrera, idHipodromo});
        r.ganadores = db.exec(
            "update tablafija set estatus=1,cobrado=tablas*? where carrera=? and fecha=? and caballo=? and estatus=0",
            {r.premio, carrera, fecha, ganador});
        db.exec("update carreras set estado_tf=1,venta_tf=0 where fecha=? and carrera=? and id_hipodromo=?",
                {fecha, carrera, idHipodromo});
        return r;
    });
}

Recordset EscritorioTablaFija::caballos(const Seleccion& s) {
    Recordset rs;
    guardado([&] {
        const auto pista = idHipodromo(s, true);
        if (pista) rs = db().query(kFilasCarrera, {s.fecha, s.carrera, *pista});
    });
    return rs;
}

bool EscritorioTablaFija::fijarValor(const Seleccion& s, long long idCarrera, const QString& valor) {
    return fijarCelda(s, idCarrera, "valor_tf", valor);
}

bool EscritorioTablaFija::retirar(const Seleccion& s, long long idCarrera, bool retirado) {
    return guardado([&] {
        db().exec("update carreras set retirado_tf=? Where carrera = ? and fecha = ? and id_carrera = ?",
                  {retirado ? 1 : 0, s.carrera, s.fecha, idCarrera});
    });
}

bool EscritorioTablaFija::fijarMaximo(const Seleccion& s, long long idCarrera, const QString& valor) {
    return fijarCelda(s, idCarrera, "apuesta_max_tf", valor);
}

bool EscritorioTablaFija::fijarCelda(const Seleccion& s, long long idCarrera, const char* columna,
                                     const QString& valor) {
    const auto v = monto(valor);
    if (!v) {
        ctx_.dialogs.refuse(texto::TituloValidacionDatos, texto::ValorNoValido);
        return false;
    }
    return guardado([&] {
        db().exec(std::string("update carreras set ") + columna +
                      "=? Where carrera = ? and fecha = ? and id_carrera = ?",
                  {*v, s.carrera, s.fecha, idCarrera});
    });
}

bool EscritorioTablaFija::abrir(const Seleccion& s, bool abierta) {
    return guardado([&] {
        const auto pista = idHipodromo(s, true);
        if (!pista) return false;
        const Params p{s.fecha, s.carrera, *pista};
        if (abierta &&
            Row::toInteger(db().scalar("SELECT max(estado_tf) FROM carreras WHERE fecha=? and carrera=? and "
                                       "id_hipodromo=?",
                                       p)) != 0 &&
            !ctx_.dialogs.confirm(kTituloProceso, texto::CarreraYaProcesadaAbrir, true, Icon::Warning))
            return false;
        escribirCarreras(db(), "venta_tf=?,bloqueotf=?", {abierta ? 1 : 0, abierta ? 0 : 1},
                         "fecha = ? and carrera = ? and id_hipodromo = ?", p, !abierta);
        ctx_.dialogs.inform(texto::TituloAdministracionCarreras, texto::CambiosRealizados);
        return true;
    });
}

double EscritorioTablaFija::premio() {
    double v = 0;
    guardado([&] { v = Row::toNumber(db().scalar("SELECT valortablafija FROM configuracion")); });
    return v;
}

bool EscritorioTablaFija::fijarPremio(const QString& valor) {
    const auto v = monto(valor);
    if (!v || *v <= 0) {
        ctx_.dialogs.refuse(texto::TituloValidacionDatos, texto::ValorNoValido);
        return false;
    }
    return guardado([&] {
        db().exec("update configuracion set valortablafija=?", {*v});
        ctx_.dialogs.inform(texto::TituloAdministracionSistema, texto::CambiosRealizados);
    });
}

std::optional<Row> EscritorioTablaFija::cupos(const QString& centro) {
    std::optional<Row> out;
    guardado([&] {
        db().exec("INSERT IGNORE INTO venta_cupo_tf (ch) VALUES (?)", {centro});
        out = db().query("SELECT * FROM venta_cupo_tf where  ch  = ?", {centro}).first();
    });
    return out;
}

bool EscritorioTablaFija::fijarCupo(const QString& centro, long long caballo, const QString& valor) {
    const auto v = monto(valor);
    if (!v || caballo < 1 || caballo > kCaballosTablaFija) {
        ctx_.dialogs.refuse(texto::TituloValidacionDatos, texto::ValorNoValido);
        return false;
    }
    // The column comes from a checked number, never from the user's text.
    return guardado([&] {
        db().exec("INSERT IGNORE INTO venta_cupo_tf (ch) VALUES (?)", {centro});
        db().exec(QStringLiteral("update venta_cupo_tf set cab%1=? Where ch = ?").arg(caballo).toStdString(),
                  {*v, centro});
    });
}

std::optional<ProcesoTablaFija> EscritorioTablaFija::procesar(const Seleccion& s, const QString& caballo) {
    std::optional<ProcesoTablaFija> out;
    const auto ganador = leerEntero(caballo, kCaballosTablaFija);
    if (!ganador || *ganador == 0) {
        ctx_.dialogs.refuse(texto::TituloValidacionDatos, kCaballoNoValido);
        return out;
    }
    guardado([&] {
        const auto pista = idHipodromo(s, true);
        if (!pista) return;
        const Recordset filas = db().query(kFilasCarrera, {s.fecha, s.carrera, *pista});
        const Row* fila = nullptr;
        bool procesada = false;
        for (const Row& r : filas) {
            if (r.integer("nu_caballo") == *ganador) fila = &r;
            procesada = procesada || r.integer("estado_tf") != 0;
        }
        if (!fila) {
            ctx_.dialogs.refuse(texto::TituloValidacionDatos, texto::CaballoNoExiste);
            return;
        }
        if (fila->integer("retirado_tf") != 0) {
            ctx_.dialogs.refuse(texto::TituloValidacionDatos, texto::CaballoRetirado);
            return;
        }
        if (Row::toNumber(db().scalar("SELECT valortablafija FROM configuracion")) <= 0) {
            ctx_.dialogs.refuse(texto::TituloValidacionDatos, kSinPremio);
            return;
        }
        if (procesada && !ctx_.dialogs.confirm(kTituloProceso,
                                               QStringLiteral("Esta carrera ya fue procesada, ¿Desea hacerlo de nuevo?")))
            return;
        out = procesarTablaFija(db(), s.fecha, s.carrera, *pista, *ganador);
        ctx_.dialogs.inform(kTituloAplicacion, QStringLiteral("CARRERA PROCESADA CON EXITO"));
    });
    return out;
}

bool EscritorioTablaFija::limpiar(const Seleccion& s) {
    return guardado([&] {
        const auto pista = idHipodromo(s, true);
        if (!pista) return false;
        db().inTransaction([&] {
            db().query(std::string(kFilasCarrera) + " FOR UPDATE", {s.fecha, s.carrera, *pista});
            db().exec("update tablafija set estatus=0,cobrado=0 where carrera =? and fecha  = ? and estatus <> 4 and "
                      "estatus<> 3 and estatus <> 2",
                      {s.carrera, s.fecha});
            db().exec("update carreras set estado_tf=0 where fecha=? and carrera=? and id_hipodromo=?",
                      {s.fecha, s.carrera, *pista});
        });
        ctx_.dialogs.inform(QStringLiteral("DIVIDENDOS"), QStringLiteral("SE HA LIMPIADO LA CARRERA  CON EXITO"));
        return true;
    });
}

bool EscritorioTablaFija::anularCarrera(const Seleccion& s) {
    return guardado([&] {
        if (!ctx_.dialogs.confirm(QStringLiteral("Anulacion de Carrera"), QStringLiteral("Desea anular la carrera")))
            return false;
        std::string sql = "update tablafija set estatus=4,cobrado=monto Where  carrera = ? and fecha  = ? and "
                          "(estatus<>2 and estatus<>3 and estatus <>4)";
        Params p{s.carrera, s.fecha};
        if (s.grupoElegido()) {
            sql += " and grupo = ?";
            p.push_back(s.grupo);
        }
        db().exec(sql, p);
        ctx_.dialogs.inform(texto::TituloAdministracionSistema, texto::CambiosRealizados);
        return true;
    });
}

std::optional<EscritorioTablaFija::TotalesDia> EscritorioTablaFija::totales(const Seleccion& s) {
    std::optional<TotalesDia> out;
    guardado([&] {
        const Row r = db().query("SELECT sum(monto) as venta, sum(IF(estatus in (1,2,3,4), cobrado, 0)) as "
                                 "monto_cobrado FROM tablafija where fecha = ?",
                                 {s.fecha})
                          .first();
        out = TotalesDia{r.number("venta"), r.number("monto_cobrado")};
    });
    return out;
}

}  // namespace hipico
