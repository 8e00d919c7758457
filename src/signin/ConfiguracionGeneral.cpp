#include "signin/ConfiguracionGeneral.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "core/Guardia.h"
#include "core/Session.h"
#include "core/Textos.h"

namespace hipico {

namespace {

using T = Campo::Tipo;
using namespace campo;

constexpr double kMillon = 1e6;

// The window's name in the administrator's log.
const QString kVentana = QStringLiteral("Form_ConfiguracionGeneral");

const QString kDia = QStringLiteral("DIA DE TRABAJO");
const QString kVentas = QStringLiteral("VENTAS");
const QString kEmpresa = QStringLiteral("EMPRESA Y MENSAJES");
const QString kSistema = QStringLiteral("SISTEMA");
const QString kSeguridad = QStringLiteral("SEGURIDAD");
const QString kGanadores = QStringLiteral("VENTA DE GANADORES");
const QString kTaquilla = QStringLiteral("TAQUILLA");
const QString kSubastas = QStringLiteral("SUBASTAS");
const QString kMacuare = QStringLiteral("MACUARE");

}  // namespace

const QVector<Campo>& camposConfiguracion() {
    static const QVector<Campo> campos = {
        {"fecha", "FECHA DE TRABAJO", kDia, T::Fecha, 0, 0, 10, {}},
        entero("carrera", "CARRERA ACTUAL", kDia, 0, 99),
        entero("id_hipodromo", "HIPODROMO ACTUAL (CODIGO)", kDia, 0, 99999),
        opcion("modoventa", "MODO DE VENTA", kDia,
               {"UN SOLO HIPODROMO", "POR HIPODROMO", "POR HIPODROMO (2)", "POR HIPODROMO CON PUESTOS"}),
        interruptor("venta_ganadores", "VENTA DE GANADORES ABIERTA", kDia),
        interruptor("venta_remate", "VENTA DE REMATE ABIERTA", kDia),
        interruptor("venta_macuare", "VENTA DE MACUARE ABIERTA", kDia),
        interruptor("venta_tf", "VENTA DE TABLA FIJA ABIERTA", kDia),
        decimal("valor_ganador", "VALOR DEL GANADOR", kVentas, 0.01, kMillon),
        decimal("valortablafija", "VALOR DE LA TABLA FIJA", kVentas, 0, kMillon),
        decimal("apuesta_max_win", "APUESTA MAXIMA DE GANADORES", kVentas, 0, kMontoMaximo),
        decimal("cupo_tf", "CUPO DE TABLA FIJA", kVentas, 0, kMontoMaximo),
        interruptor("permitir_tf", "PERMITIR TABLA FIJA", kVentas),
        interruptor("permitir_mc", "PERMITIR MACUARE", kVentas),
        interruptor("funtdolar", "MONTOS EN DOLARES", kVentas),
        interruptor("ventas4", "VENDER CON 4 CABALLOS (BANDAS GENERALES)", kVentas),
        decimal("monto_condicionado", "MONTO CONDICIONADO", kVentas, 0, kMillon),
        entero("dias", "DIAS DE LOS BOLETOS VENCIDOS EN LA TABLA DEL DIA", kVentas, 0, 365),
        interruptor("rpt_taquillaconfirmar", "RESUMEN SOLO CON CARRERA CONFIRMADA", kVentas),
        interruptor("no_anular_cerrada", "LA TAQUILLA NO ANULA BOLETOS DE CARRERAS CERRADAS", kVentas),
        textoLibre("empresa", "EMPRESA", kEmpresa, 100),
        textoLibre("rif", "RIF", kEmpresa, 45),
        interruptor("impresion_datos", "IMPRIMIR DATOS DE LA EMPRESA", kEmpresa),
        textoLibre("mensaje", "MENSAJE DEL ADMINISTRADOR", kEmpresa, 255),
        textoLibre("mensajetaq", "MENSAJE A LAS TAQUILLAS", kEmpresa, 255),
        textoLibre("mora", "AVISO DE MORA", kEmpresa, 100),
        decimal("version", "VERSION PUBLICADA", kSistema, 0, kMontoMaximo),
        textoLibre("web", "DIRECCION DE DESCARGA", kSistema, 255),
        interruptor("centrarform", "CENTRAR LAS VENTANAS", kSistema),
        opcion("tipo_pantalla", "PANTALLA DE TABLA FIJA", kSistema, {"PANTALLA 1", "PANTALLA 2"}),
        textoLibre("conexion", "CONEXION", kSistema, 255),
        interruptor("clave_segura", "GUARDAR LAS CLAVES NUEVAS Y CAMBIADAS CON ARGON2ID", kSeguridad),
        entero("intentos_clave", "INTENTOS FALLIDOS ANTES DE RETENER LA CUENTA (0 = NUNCA)", kSeguridad, 0, 100),
        entero("minutos_bloqueo", "MINUTOS QUE LA CUENTA QUEDA RETENIDA", kSeguridad, 1, 1440),
    };
    return campos;
}

const QVector<Campo>& camposGrupo() {
    static const QVector<Campo> campos = {
        interruptor("venta_ganadores", "VENDE GANADORES", kGanadores),
        entero("cab_max", "NUMERO MAXIMO DE CABALLO", kGanadores, 1, 16),
        entero("carrera", "CARRERA DEL GRUPO (0 = LA ACTUAL)", kGanadores, 0, 99),
        entero("id_hipodromo", "HIPODROMO DEL GRUPO (0 = EL ACTUAL)", kGanadores, 0, 99999),
        decimal("valor_ganador", "VALOR DEL GANADOR (0 = EL GENERAL)", kGanadores, 0, kMillon),
        decimal("apuesta_max_win", "APUESTA MAXIMA POR BOLETO", kGanadores, 0, kMontoMaximo),
        decimal("min_bs", "JUGADA MINIMA EN BS", kGanadores, 0, kMillon),
        decimal("min_dol", "JUGADA MINIMA EN DOLARES", kGanadores, 0, kMillon),
        decimal("cupo_winxjugador", "CUPO POR JUGADOR", kGanadores, 0, kMontoMaximo),
        decimal("cupovip", "CUPO POR JUGADOR VIP", kGanadores, 0, kMontoMaximo),
        interruptor("admin_cupo", "CUPOS POR CABALLO", kGanadores),
        opcion("opcioncupowin", "CUPO DEL CABALLO", kGanadores, {"POR GRUPO", "POR CENTRO HIPICO"}),
        interruptor("pedirclave", "AUTORIZAR CON CLAVE", kGanadores),
        textoLibre("clave_win", "CLAVE DEL SUPERVISOR", kGanadores, 45),
        interruptor("inicialboleto", "CODIGO CON EL GRUPO", kGanadores),
        textoLibre("empresa", "EMPRESA EN EL BOLETO", kGanadores, 100),
        textoLibre("rif", "RIF EN EL BOLETO", kGanadores, 45),
        interruptor("impresion_datos", "IMPRIMIR DATOS DE LA EMPRESA", kGanadores),
        interruptor("ticket_cobro", "IMPRIMIR RECIBO DE COBRO", kTaquilla),
        interruptor("anular_boleto_win", "LA TAQUILLA ANULA BOLETOS", kTaquilla),
        interruptor("clientes", "TRABAJA CON CLIENTES", kTaquilla),
        entero("duracionboletos", "DIAS DE VALIDEZ DEL BOLETO", kTaquilla, 1, 365),
        interruptor("VerBoletosTaq", "LA TAQUILLA VE SUS BOLETOS", kTaquilla),
        opcion("mascara", "MONTOS EN PANTALLA", kTaquilla, {"CON MONEDA", "NUMEROS SIMPLES"}),
        interruptor("permitirpdiv", "PERMITIR DIVIDENDOS", kTaquilla),
        opcion("no_aut_3t", "REGLA DE LAS TABLAS", kSubastas,
               {kOpcionesNoAut3t[0], kOpcionesNoAut3t[1], kOpcionesNoAut3t[2]}),
        entero("veces_mc", "VECES MAXIMAS DEL MACUARE", kMacuare, 0, 1000),
        decimal("apuesta_max_mc", "APUESTA MAXIMA DEL MACUARE", kMacuare, 0, kMontoMaximo),
        decimal("cupo_mc", "CUPO POR COMBINACION", kMacuare, 0, kMontoMaximo),
        textoLibre("mensajemc", "MENSAJE DEL MACUARE", kMacuare, 255),
    };
    return campos;
}

ConfiguracionGeneral::ConfiguracionGeneral(Context& ctx) : ctx_(ctx) {}

std::optional<ValoresCampos> ConfiguracionGeneral::cargar() {
    return intentar(ctx_, kVentana, [&] {
        return valoresDe(ctx_.servidor().query("select * from configuracion").first(), camposConfiguracion());
    });
}

bool ConfiguracionGeneral::escribir(const QString& tabla, const QVector<Campo>& campos,
                                    const ValoresCampos& valores, const QString& donde,
                                    const Params& parametrosDonde) {
    // Every field first: one refusal and nothing is written.
    Params params;
    QStringList asignaciones;
    for (const Campo& c : campos) {
        SqlValue v;
        const QString negado = validarCampo(c, valores.value(c.columna), v);
        if (!negado.isEmpty()) {
            ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, negado);
            return false;
        }
        asignaciones << QLatin1Char('`') + c.columna + QStringLiteral("` = ?");
        params.push_back(v);
    }
    params.insert(params.end(), parametrosDonde.begin(), parametrosDonde.end());
    const std::string sql =
        ("UPDATE `" + tabla + "` SET " + asignaciones.join(QStringLiteral(", ")) + " WHERE " + donde).toStdString();
    return proteger(ctx_, kVentana, [&] {
        ctx_.servidor().exec(sql, params);
        return true;
    });
}

bool ConfiguracionGeneral::guardar(const ValoresCampos& valores) {
    if (!escribir(QStringLiteral("configuracion"), camposConfiguracion(), valores, QStringLiteral("id = 1"), {}))
        return false;
    proteger(ctx_, kVentana,
             [&] { cargarConfiguracion(ctx_.session, ctx_.servidor().query("select * from configuracion").first()); });
    ctx_.dialogs.inform(kTituloConfiguracion, texto::CambiosRealizados);
    return true;
}

QStringList ConfiguracionGeneral::grupos() {
    QStringList out;
    proteger(ctx_, kVentana, [&] {
        for (const Row& r : ctx_.servidor().query("select grupo from grupos order by grupo")) out << r.text("grupo");
    });
    return out;
}

QStringList ConfiguracionGeneral::centros() {
    QStringList out;
    proteger(ctx_, kVentana, [&] {
        for (const Row& r : ctx_.servidor().query("select distinct ch from grupos order by ch")) out << r.text("ch");
    });
    return out;
}

std::optional<ValoresCampos> ConfiguracionGeneral::cargarGrupo(const QString& grupo) {
    std::optional<ValoresCampos> out;
    proteger(ctx_, kVentana, [&] {
        const Recordset rs = ctx_.servidor().query("select * from grupos where grupo = ? limit 1", {grupo});
        if (rs.empty()) {
            ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, texto::DebeSeleccionarGrupo);
            return;
        }
        out = valoresDe(rs.first(), camposGrupo());
    });
    return out;
}

bool ConfiguracionGeneral::guardarGrupo(const QString& grupo, const ValoresCampos& valores, bool copiarAlCentro) {
    std::optional<QString> centro;
    proteger(ctx_, kVentana, [&] {
        const Recordset rs = ctx_.servidor().query("select ch from grupos where grupo = ? limit 1", {grupo});
        if (!rs.empty()) centro = rs.first().text("ch");
    });
    if (!centro) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, texto::DebeSeleccionarGrupo);
        return false;
    }
    const bool hecho = copiarAlCentro
                           ? escribir(QStringLiteral("grupos"), camposGrupo(), valores, QStringLiteral("ch = ?"), {*centro})
                           : escribir(QStringLiteral("grupos"), camposGrupo(), valores, QStringLiteral("grupo = ?"), {grupo});
    if (!hecho) return false;
    if (grupo == ctx_.session.grupo || (copiarAlCentro && *centro == ctx_.session.ch))
        proteger(ctx_, kVentana, [&] {
            const Recordset rs = ctx_.servidor().query("select * from grupos where grupo = ? limit 1", {ctx_.session.grupo});
            if (!rs.empty()) cambiarGrupo(ctx_.session, rs.first());
        });
    ctx_.dialogs.inform(kTituloConfiguracion,
                        copiarAlCentro ? QStringLiteral("LOS PARAMETROS SE COPIARON A TODOS LOS GRUPOS DE ") + *centro
                                       : texto::CambiosRealizados);
    return true;
}

std::optional<long long> ConfiguracionGeneral::depurar(const QString& antesDe) {
    const QDate d = QDate::fromString(antesDe.trimmed(), QStringLiteral("dd-MM-yyyy"));
    if (!d.isValid()) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, QStringLiteral("LA FECHA NO ES VALIDA (DD-MM-AAAA)"));
        return std::nullopt;
    }
    const QString fecha = fechaSql(d);
    if (fecha > ctx_.session.fecha && !ctx_.session.fecha.isEmpty()) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente,
                            QStringLiteral("LA FECHA NO PUEDE SER POSTERIOR A LA FECHA DE TRABAJO"));
        return std::nullopt;
    }
    if (!ctx_.dialogs.confirm(kTituloConfiguracion,
                              QStringLiteral("SE ELIMINARAN LOS BOLETOS GUARDADOS Y LA BITACORA ANTERIORES AL ") +
                                  fechaVista(d) + QStringLiteral(". ¿DESEA CONTINUAR?"),
                              true))
        return std::nullopt;
    return intentar(ctx_, kVentana, [&] {
        Db& db = ctx_.servidor();
        const long long borrados = db.inTransaction([&] {
            long long n = 0;
            for (const char* tabla : {"ventas_ganadores", "ventas_tf", "ventas_mc", "bitacora", "bitacora_tf"})
                n += db.exec(std::string("DELETE FROM `") + tabla + "` WHERE fecha < ?", {fecha});
            return n;
        });
        ctx_.dialogs.inform(kTituloConfiguracion, QStringLiteral("SE ELIMINARON %1 REGISTROS").arg(borrados));
        return borrados;
    });
}

}  // namespace hipico
