#include "sales/CuentasClientes.h"

#include "core/Context.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "core/Guardia.h"
#include "core/Niveles.h"
#include "core/Textos.h"
#include "sales/AjustesLocales.h"
#include "sales/Tickets.h"

#include <cmath>

namespace hipico {

namespace {

// Half a thousandth: amounts are compared to the cent.
constexpr double kTolerancia = 0.0005;
constexpr int kLargoNombre = 100;
constexpr int kLargoTexto = 45;
constexpr int kLargoObservacion = 255;

const QString kVentana = QStringLiteral("Form_IngresoJugadas");

// The first text of the list that does not fit, as the user is told it; "" when all fit.
QString primeroLargo(std::initializer_list<std::tuple<const char*, QString, int>> textos) {
    for (const auto& [nombre, texto, maximo] : textos)
        if (QString m = textoDemasiadoLargo(QString::fromUtf8(nombre), texto.trimmed(), maximo); !m.isEmpty()) return m;
    return {};
}
const QString kUsuarioClienteRepetido = QStringLiteral("EL USUARIO DEL CLIENTE YA EXISTE EN ESTE CENTRO HIPICO");
const QString kSinTipoOBanco = QStringLiteral("DEBE SELECCIONAR EL TIPO DE OPERACION Y EL BANCO");
const QString kSinJuego = QStringLiteral("DEBE SELECCIONAR EL JUEGO DE LA JUGADA");
const QString kFechasInvertidas = QStringLiteral("LA FECHA INICIAL ES POSTERIOR A LA FECHA FINAL");

const char* const kEstado =
    "SELECT id_jugadas as ID, o.monto as MONTO,o.fecha as FECHA,o.hora as HORA,monto_tipo as OPERACION,c.cliente AS "
    "CLIENTE, t.tipo as TIPO, o.nu_operacion as NUMERO,u.nombre as USUARIO, b.banco AS BANCO,o.observacion FROM "
    "jugadas_clientes o,clientes c,tipo_deposito t,usuarios u, bancos b Where o.id_cliente=c.id_cliente and "
    "o.tipo_operacion=t.id_tipo_deposito and o.id_usuario=u.id_usuario and b.id_banco=o.id_banco and o.id_cliente = "
    "? and fecha between ? and ?  order by fecha;";

IngresoJugadas::Opciones opcionesDe(Db& db, const char* sql) {
    IngresoJugadas::Opciones out;
    for (const Row& r : db.query(sql)) out.append({int(r.integer("id")), r.text("nombre")});
    return out;
}

}  // namespace

double saldoCliente(Db& db, long long idCliente) {
    return Row::toNumber(db.scalar("SELECT sum(monto) as saldo FROM jugadas_clientes  Where  id_cliente = ?", {idCliente}));
}

Asiento asentarMovimiento(Db& db, const MovimientoCliente& m) {
    return db.inTransaction([&] {
        Asiento a;
        a.saldo = Row::toNumber(db.scalar("SELECT saldo FROM clientes WHERE id_cliente = ? FOR UPDATE", {m.idCliente}));
        if (m.monto < 0 && -m.monto > a.saldo + kTolerancia) return a;
        insertar(db, m.insercion());
        a.escrito = true;
        return a;
    });
}

Recordset jugadasDelCliente(Db& central, long long idCliente, const QString& desde, const QString& hasta) {
    return central.query(kEstado, {idCliente, desde, hasta});
}

void llenarJugadasClientes(Db& local, const Recordset& movimientos) {
    local.inTransaction([&] {
        local.exec("DELETE from rpt_jugadas_clientes");
        for (const Row& m : movimientos) insertar(local, lineaEstadoCliente(m));
    });
}

Impreso reciboJugada(const DatosJugada& j, bool grafico) {
    Impreso p;
    p.lineas << (grafico ? QStringLiteral("   REGISTRO DE JUGADA") : QStringLiteral("    REGISTRO DE JUGADA"))
             << (grafico ? QStringLiteral("CENTRO HIPICO ") : QStringLiteral("CH:")) + j.centro
             << QStringLiteral("F: ") + fechaVista(j.fecha) << QStringLiteral("H: ") + j.hora
             << QStringLiteral("JUEGO: ") + j.juego << QStringLiteral("MONTO JUGADO: ") + formatoMoneda(j.monto)
             << kSeparadorPrueba;
    return p;
}

IngresoJugadas::IngresoJugadas(Context& ctx) : ctx_(ctx), impresora_(ctx) { cargarImpresion(ctx_); }

const QStringList& IngresoJugadas::juegos() {
    static const QStringList lista{QStringLiteral("Ganadores"), QStringLiteral("Tabla Fija"), QStringLiteral("Macuare"),
                                   QStringLiteral("Subasta")};
    return lista;
}

IngresoJugadas::Opciones IngresoJugadas::tiposOperacion() {
    return intentar(ctx_, kVentana, [&] {
               return opcionesDe(ctx_.servidor(),
                                 "SELECT id_tipo_deposito AS id, tipo AS nombre FROM tipo_deposito ORDER BY id_tipo_deposito");
           })
        .value_or(Opciones());
}

IngresoJugadas::Opciones IngresoJugadas::bancos() {
    return intentar(ctx_, kVentana, [&] {
               return opcionesDe(ctx_.servidor(), "SELECT id_banco AS id, banco AS nombre FROM bancos ORDER BY id_banco");
           })
        .value_or(Opciones());
}

// The clients the session may see, as conditions after a WHERE.
std::string IngresoJugadas::visibles(Params& params) const {
    const Session& s = ctx_.session;
    if (esAdministrador(s.nivel)) return {};
    params.push_back(s.ch);
    if (s.nivel == nivel::Gerente) return " and ch=?";
    params.push_back(s.idUsuario);
    return " and ch=? and id_usuario=?";
}

std::optional<Recordset> IngresoJugadas::buscarClientes(const QString& texto, bool avisar) {
    const QString patron = patronContiene(texto.trimmed());
    auto filas = intentar(ctx_, kVentana, [&] {
        Params params{patron};
        if (esAdministrador(ctx_.session.nivel))
            return ctx_.servidor().query("SELECT * FROM clientes  Where  cliente like ? order by cliente asc   ", params);
        params.push_back(patron);
        const std::string donde = visibles(params);
        return ctx_.servidor().query(
            "SELECT * FROM clientes  Where  (cliente like ? OR usuario like ?)" + donde + " order by cliente asc   ", params);
    });
    if (filas && filas->empty()) {
        if (avisar) ctx_.dialogs.inform(texto::TituloBusqueda, kNoSeEncuentraCliente);
        return std::nullopt;
    }
    return filas;
}

bool IngresoJugadas::elegirCliente(long long idCliente) {
    return proteger(ctx_, kVentana, [&] {
        Db& db = ctx_.servidor();
        Params params{idCliente};
        const std::string donde = visibles(params);
        const Recordset rs = db.query("SELECT * FROM clientes WHERE id_cliente = ?" + donde, params);
        if (rs.empty()) {
            ctx_.dialogs.inform(texto::TituloBusqueda, kNoSeEncuentraCliente);
            return false;
        }
        const Row& r = rs.first();
        cliente_ = Cliente{r.integer("id_cliente"), r.text("cliente"), r.toInt("tipo_cliente"), r.text("usuario"),
                           saldoCliente(db, idCliente)};
        return true;
    });
}

bool IngresoJugadas::nuevoCliente(const DatosCliente& datos) {
    const auto nombre = ctx_.dialogs.ask(kTituloNuevoCliente, kIngreseNombreCliente);
    if (!nombre) return false;
    const QString n = nombre->trimmed();
    const QString usuario = datos.usuario.trimmed();
    if (n.isEmpty()) {
        ctx_.dialogs.refuse(texto::TituloInformacionSistema, kNombreClienteVacio);
        return false;
    }
    if (const QString largo = primeroLargo({{"EL NOMBRE DEL CLIENTE", n, kLargoNombre},
                                            {"LA OBSERVACION", datos.observacion, kLargoObservacion},
                                            {"EL USUARIO", usuario, kLargoTexto}});
        !largo.isEmpty()) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, largo);
        return false;
    }
    const Session& s = ctx_.session;
    const QString hoy = s.fecha.isEmpty() ? fechaSql(ctx_.clock.today()) : s.fecha;
    bool repetido = false;
    long long id = 0;
    const bool hecho = proteger(ctx_, kVentana, [&] {
        Db& db = ctx_.servidor();
        return db.inTransaction([&] {
            // The booth's sale finds a client by user name within the centre: one name, one client.
            repetido = !usuario.isEmpty() &&
                       !db.query("SELECT id_cliente FROM clientes WHERE usuario = ? AND ch = ? FOR UPDATE", {usuario, s.ch})
                            .empty();
            if (repetido) return false;
            db.exec("INSERT INTO clientes (cliente, ch, observacion, tipo_cliente, usuario, clave, estatus, "
                    "fecha_ingreso, id_usuario, cupo) VALUES (?, ?, ?, ?, ?, '', 'Activo', ?, ?, 0)",
                    {n, s.ch, datos.observacion.trimmed(), datos.tipo == 2 ? 2 : 1, usuario, hoy, s.idUsuario});
            id = db.lastInsertId();
            return true;
        });
    });
    if (repetido) ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, kUsuarioClienteRepetido);
    if (!hecho) return false;
    ctx_.dialogs.inform(texto::TituloInformacionSistema, texto::DatosAlmacenados);
    elegirCliente(id);
    return true;
}

bool IngresoJugadas::procesar(const Jugada& j) {
    if (!cliente_) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, kDebeSeleccionarCliente);
        return false;
    }
    double monto = 0;
    if (!leerMonto(j.monto, monto) || monto <= 0 || monto > kMontoMaximo) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, texto::MontoNoValido);
        return false;
    }
    monto = std::round(monto * 100) / 100;
    if (!j.positiva && !juegos().contains(j.juego)) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, kSinJuego);
        return false;
    }
    if (j.tipo <= 0 || j.banco <= 0) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, kSinTipoOBanco);
        return false;
    }
    if (const QString largo = primeroLargo({{"EL NUMERO DE OPERACION", j.nuOperacion, kLargoTexto}}); !largo.isEmpty()) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, largo);
        return false;
    }
    QString observacion = j.observacion.trimmed();
    if (j.positiva) {
        const auto motivo = ctx_.dialogs.ask(kTituloPositivo, kMotivoPositivo);
        if (!motivo) return false;
        if (motivo->trimmed().isEmpty()) {
            ctx_.dialogs.refuse(kTituloPositivo, texto::SinMotivo);
            return false;
        }
        observacion = motivo->trimmed();
    }
    const Session& s = ctx_.session;
    MovimientoCliente m;
    m.idCliente = cliente_->id;
    m.monto = j.positiva ? monto : -monto;
    m.tipo = j.positiva ? kOperacionPositiva : j.juego;
    m.operacion = j.tipo;
    m.idUsuario = s.idUsuario;
    m.banco = j.banco;
    m.nuOperacion = j.nuOperacion.trimmed();
    m.fecha = s.fecha.isEmpty() ? fechaSql(ctx_.clock.today()) : s.fecha;
    m.hora = horaTexto(ctx_.clock.now().time());
    m.observacion = observacion.left(kLargoObservacion);
    const auto asiento = intentar(ctx_, kVentana, [&] { return asentarMovimiento(ctx_.servidor(), m); });
    if (!asiento) return false;
    cliente_->saldo = asiento->escrito ? asiento->saldo + m.monto : asiento->saldo;
    if (!asiento->escrito) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, texto::SinSaldoCliente + formatoMoneda(asiento->saldo));
        return false;
    }
    recibo_ = reciboJugada({s.ch, m.fecha, m.hora, m.tipo, monto}, impresora_.grafico());
    impresora_.imprimir(*recibo_);
    ctx_.dialogs.inform(kTituloRegistroJugada, kDatosGuardados);
    return true;
}

std::optional<Recordset> IngresoJugadas::estadoDeCuenta(const QDate& desde, const QDate& hasta, bool avisar) {
    if (!cliente_) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, kDebeSeleccionarCliente);
        return std::nullopt;
    }
    if (desde > hasta) {
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, kFechasInvertidas);
        return std::nullopt;
    }
    auto filas = intentar(ctx_, kVentana, [&] {
        const Recordset rs = jugadasDelCliente(ctx_.servidor(), cliente_->id, fechaSql(desde), fechaSql(hasta));
        if (auto local = conexionLocalDisponible(ctx_)) llenarJugadasClientes(*local, rs);
        return rs;
    });
    if (filas && filas->empty()) {
        if (avisar) ctx_.dialogs.inform(texto::TituloBusqueda, texto::SinRegistros);
        return std::nullopt;
    }
    return filas;
}

}  // namespace hipico
