#include "sales/Flujos.h"

#include "core/Connections.h"
#include "core/Context.h"
#include "core/Db.h"
#include "core/Diario.h"
#include "core/Formato.h"
#include "core/Guardia.h"
#include "core/RegistroErrores.h"
#include "core/Textos.h"
#include "sales/ImpresoraTaquilla.h"
#include "sales/TicketKeys.h"

#include <QUuid>
#include <cmath>
#include <cstring>
#include <variant>

namespace hipico {

Estatus estatusDe(const Row& boleto) { return static_cast<Estatus>(boleto.integer("estatus")); }

bool liquidado(Estatus e) { return e == Estatus::Pagado || e == Estatus::DevolucionPagada; }

QString fechaTrabajo(const Context& ctx) {
    return ctx.session.fecha.isEmpty() ? fechaSql(ctx.clock.today()) : ctx.session.fecha;
}

const Pagable* Juego::pagable(Estatus e) const {
    for (const Pagable& p : pagables)
        if (p.estatus == e) return &p;
    return nullptr;
}

namespace {

void mostrar(Context& ctx, const Aviso& a) { ctx.dialogs.message(a.icono, a.titulo, a.texto); }

std::string sql(std::initializer_list<std::string_view> partes) {
    std::string s;
    for (std::string_view p : partes) s += p;
    return s;
}

}  // namespace

// A ticket's stake: units of a winner bet, else the amount played.
static double apuesta(const Row& boleto) {
    return boleto.has("ganadores") ? boleto.number("ganadores") : boleto.numberOr("monto");
}

AsientoDiario asiento(const QString& operacion, const Juego& juego, const Row& b, double monto) {
    return {operacion, QString::fromLatin1(juego.tabla), b.text(juego.codigo), b.text("grupo"), b.text("fecha"),
            b.integerOr("carrera"), apuesta(b), monto};
}

// ---------------------------------------------------------------- sale

namespace {

double numeroDe(const SqlValue& v) { return v.toString().toDouble(); }


// What the booth is told when its connection broke during a sale.
const QString kVentaRecuperada =
    QStringLiteral("SE PERDIO LA CONEXION CON EL SERVIDOR, PERO LA VENTA SE REALIZO. BOLETO: ");
const QString kVentaNoRealizada =
    QStringLiteral("SE PERDIO LA CONEXION CON EL SERVIDOR: LA VENTA NO SE REALIZO, NO SE VENDIO NINGUN BOLETO");

// ... and during a payment.
const QString kCobroRealizado =
    QStringLiteral("SE PERDIO LA CONEXION CON EL SERVIDOR, PERO EL BOLETO QUEDO PAGADO");
const QString kCobroNoRealizado =
    QStringLiteral("SE PERDIO LA CONEXION CON EL SERVIDOR: EL BOLETO NO SE PAGO");

// A token no other sale has: 32 hexadecimal digits of a random identifier.
QString nuevaFicha() { return QUuid::createUuid().toString(QUuid::Id128); }

}  // namespace

Venta vender(Context& ctx, const QString& ventana, const Juego& juego, Jugada& jugada,
             ImpresoraTaquilla& impresora) {
    Db& db = ctx.servidor();
    jugada.preparar(db);
    if (jugada.ficha.isEmpty()) jugada.ficha = nuevaFicha();
    Venta venta;
    try {
        venta = db.inTransaction([&]() -> Venta {
            // Every lock first, then the checks over what the locks hold still.
            jugada.bloquear(db);
            for (const Jugada::Chequeo& chequeo : jugada.chequeos())
                if (std::optional<Rechazo> r = chequeo()) return {std::move(r), 0, {}};
            // From here on a broken connection leaves the outcome to be found out.
            jugada.incierta = true;
            // The number is the insert's own key, returned by the insert itself.
            Venta v;
            const Insercion fila = jugada.fila(jugada.ficha);
            v.numero = insertar(db, fila, "numero");
            v.codigo = codigoBoleto(jugada.prefijo(), desdeFechaSql(jugada.fecha()), v.numero);
            jugada.completar(db, v.numero, v.codigo);
            const SqlValue unidades = fila.valor("ganadores");
            anotar(db, {operacion::Venta, QString::fromLatin1(juego.tabla), v.codigo, fila.valor("grupo").toString(),
                        jugada.fecha(), static_cast<long long>(numeroDe(fila.valor("carrera"))),
                        numeroDe(unidades.isNull() ? fila.valor("monto") : unidades), jugada.dinero()});
            return v;
        });
    } catch (const DbError& e) {
        // Cut off with its outcome unknown, or run again and its token is
        // already there (a cluster node undid the transaction around an
        // earlier run's insert, which the server kept on its own): the
        // token tells what was sold.
        const bool fichaRepetida = e.nativeCode() == 1062 && std::strstr(e.what(), "_ficha'") != nullptr;
        if ((!e.isConnectionLost() && !fichaRepetida) || !jugada.incierta) throw;
        registrarError(ctx, ventana, e);
        return resolverVenta(ctx, juego, jugada, impresora, true);
    }
    // Committed (a first attempt cut before its commit was rolled back by the server).
    jugada.incierta = false;
    if (venta.rechazo) {
        mostrar(ctx, *venta.rechazo);
        return venta;
    }
    impresora.imprimir(jugada.ticket(venta.numero, venta.codigo, impresora.grafico()));
    return venta;
}

Sello::Sello(const char* tabla, const char* asignaciones, const char* donde, const char* contador)
    : solo_(sql({"update ", tabla, " m set ", asignaciones, " Where ", donde})),
      contado_(sql({"update ", tabla, " m JOIN carreras c ON c.id_carrera = ? set ", asignaciones, ", c.", contador,
                    " = c.", contador, " + 1 Where ", donde})) {}

long long Sello::escribir(Db& db, long long fila, const Params& valores) const {
    if (!db.enCluster()) return db.exec(solo_, valores);
    Params conFila;
    conFila.reserve(valores.size() + 1);
    conFila.emplace_back(fila);
    conFila.insert(conFila.end(), valores.begin(), valores.end());
    return db.exec(contado_, conFila);
}

Venta resolverVenta(Context& ctx, const Juego& juego, Jugada& jugada, ImpresoraTaquilla& impresora,
                    bool avisarAusente) {
    Db& db = ctx.servidor();
    const Recordset rs = db.inTransaction([&] {
        return db.query(sql({"SELECT numero, ", juego.codigo, " FROM ", juego.tabla, " Where ficha = ? FOR UPDATE"}),
                        {jugada.ficha});
    });
    jugada.incierta = false;
    Venta venta;
    if (rs.empty()) {
        Rechazo r;
        r.titulo = kTituloConexion;
        r.texto = kVentaNoRealizada;
        if (avisarAusente) mostrar(ctx, r);
        venta.rechazo = r;
        return venta;
    }
    venta.numero = rs.first().integer("numero");
    venta.codigo = rs.first().text(juego.codigo);
    venta.recuperada = true;
    impresora.imprimir(jugada.ticket(venta.numero, venta.codigo, impresora.grafico()));
    ctx.dialogs.inform(kTituloConexion, kVentaRecuperada + venta.codigo);
    return venta;
}

// ---------------------------------------------------------------- payment

namespace {

std::optional<Row> leerPorCodigo(Db& db, const char* tabla, const char* columna, const QString& codigo) {
    const Recordset rs = db.query(sql({"SELECT * FROM ", tabla, " Where ", columna, " = ?"}), {codigo});
    if (rs.empty()) return std::nullopt;
    return rs.first();
}

// The tamper checks of the game on the ticket and its kept copy ("" when it passes).
QString alteracion(Db& db, const Juego& juego, const Row& boleto) {
    if (!juego.alteracion) return {};
    const QString codigo = boleto.text(juego.codigo);
    return juego.alteracion(boleto, leerPorCodigo(db, juego.copia, juego.codigo, codigo));
}

// The outcome of the lookup for this booth: the payable status, or why not.
std::variant<const Pagable*, Aviso> desenlace(const Context& ctx, const Juego& juego, const Row& b) {
    const QString& titulo = juego.tituloCobro;
    if (b.text(juego.taquilla) != ctx.session.ch) return Aviso{Icon::Critical, titulo, texto::BoletoNoPertenece};
    const Estatus e = estatusDe(b);
    if (e == Estatus::Vendido) return Aviso{Icon::Critical, titulo, texto::BoletoNoGanador};
    if (liquidado(e)) return Aviso{Icon::Critical, titulo, texto::BoletoYaPagado};
    const Pagable* p = juego.pagable(e);
    if (!p) return Aviso{Icon::Critical, titulo, texto::VerifiqueNumeroBoleto};
    const QString hoy = fechaTrabajo(ctx);
    const QDate venta = desdeFechaSql(b.text("fecha"));
    const QDate dia = desdeFechaSql(hoy);
    const long long dias = venta.isValid() && dia.isValid() ? venta.daysTo(dia) : 0;
    if (dias > ctx.session.parametro(QStringLiteral("duracionboletos")))
        return Aviso{Icon::Critical, titulo, texto::BoletoCaducado};
    if (p->soloDelDia && b.text("fecha") != hoy) return Aviso{Icon::Warning, titulo, texto::BoletoDiaAnterior};
    return p;
}

}  // namespace

std::optional<ConsultaCobro> consultarCobro(Context& ctx, const Juego& juego, const QString& codigoTecleado) {
    const QString codigo = codigoTecleado.trimmed();
    Db& db = ctx.servidor();
    const std::optional<Row> b = codigo.isEmpty() ? std::nullopt : leerPorCodigo(db, juego.tabla, juego.codigo, codigo);
    if (!b) {
        ctx.dialogs.refuse(juego.tituloCobro, texto::VerifiqueNumeroBoleto);
        return std::nullopt;
    }
    if (const QString a = alteracion(db, juego, *b); !a.isEmpty()) {
        ctx.dialogs.refuse(texto::TituloSeguridad, a);
        return std::nullopt;
    }
    const auto d = desenlace(ctx, juego, *b);
    if (const Aviso* aviso = std::get_if<Aviso>(&d)) {
        mostrar(ctx, *aviso);
        return std::nullopt;
    }
    const Pagable* p = std::get<const Pagable*>(d);
    return ConsultaCobro{true, b->text(juego.codigo), p->mensaje, b->number("cobrado"), numeroDe(p->estatus),
                         b->integer("numero")};
}

std::optional<double> cobrar(Context& ctx, const QString& ventana, const Juego& juego, const ConsultaCobro& consulta,
                             ImpresoraTaquilla& impresora) {
    const QString hoy = fechaTrabajo(ctx);
    Db& db = ctx.servidor();
    struct Pago {
        std::optional<Aviso> aviso;
        double monto = 0;
    };
    // The paid status the ticket moves to and the amount, once the locked row was checked.
    int hacia = -1;
    double monto = 0;
    std::optional<Pago> pago;
    try {
        pago = db.inTransaction([&]() -> Pago {
            hacia = -1;
            // The ticket's row is locked: a second booth pressing at the same
            // time waits here and then finds the ticket paid.
            const std::optional<Row> b = bloquearBoleto(db, juego, consulta.numero);
            if (!b || b->text(juego.codigo) != consulta.codigo)
                return {Aviso{Icon::Critical, juego.tituloCobro, texto::VerifiqueNumeroBoleto}};
            if (const QString a = alteracion(db, juego, *b); !a.isEmpty())
                return {Aviso{Icon::Critical, texto::TituloSeguridad, a}};
            const Estatus e = estatusDe(*b);
            if (liquidado(e)) return {Aviso{Icon::Critical, juego.tituloCobro, texto::BoletoYaPagado}};
            const auto d = desenlace(ctx, juego, *b);
            // The ticket must still be what the lookup showed (a refund or a new
            // payout since then is looked up again before it is paid).
            if (!std::holds_alternative<const Pagable*>(d) || numeroDe(e) != consulta.estatus ||
                std::abs(b->number("cobrado") - consulta.monto) > 0.005)
                return {Aviso{Icon::Critical, juego.tituloCobro, texto::VerifiqueNumeroBoleto}};
            const int de = numeroDe(e);
            hacia = numeroDe(std::get<const Pagable*>(d)->pagado);
            monto = b->number("cobrado");
            // The status moves once: a row already moved by another booth is not counted.
            // By the key alone: the code was checked on the locked row, and a condition
            // on the code lets the server reach the row through the code's index.
            const long long movidos = db.exec(
                sql({"Update ", juego.tabla, " set estatus=?,fecha_cobro=? Where numero = ? and estatus = ? limit 1"}),
                {hacia, hoy, consulta.numero, de});
            if (movidos != 1) return {Aviso{Icon::Critical, juego.tituloCobro, texto::BoletoYaPagado}};
            db.exec(sql({"Update ", juego.copia, " set estatus=?,fecha_cobro=? Where ", juego.codigo,
                         " = ? and estatus = ?"}),
                    {hacia, hoy, consulta.codigo, de});
            // The day row of the ticket's group and sale day.
            const QString grupo = b->text("grupo");
            const QString fecha = b->text("fecha");
            db.exec(sql({"INSERT IGNORE INTO ", juego.totales, " (grupo, fecha) VALUES (?, ?)"}), {grupo, fecha});
            db.exec(sql({"Update ", juego.totales,
                         " set premios=premios + ?,saldo=saldo - ?,monto_porpagar=monto_porpagar - ? Where fecha =? "
                         "and grupo=? limit 1  "}),
                    {monto, monto, monto, fecha, grupo});
            anotar(db, asiento(operacion::Pago, juego, *b, monto));
            return {std::nullopt, monto};
        });
    } catch (const DbError& e) {
        if (!e.outcomeUnknown() || hacia < 0) throw;
        registrarError(ctx, ventana, e);
        // The commit was cut off: the ticket's status says whether it went through.
        const QVariant estatus =
            db.scalar(sql({"SELECT estatus FROM ", juego.tabla, " Where numero = ?"}), {consulta.numero});
        if (estatus.isNull() || Row::toInteger(estatus) != hacia) {
            ctx.dialogs.refuse(kTituloConexion, kCobroNoRealizado);
            return std::nullopt;
        }
        ctx.dialogs.inform(kTituloConexion, kCobroRealizado);
        pago = Pago{std::nullopt, monto};
    }
    if (pago->aviso) {
        mostrar(ctx, *pago->aviso);
        return std::nullopt;
    }
    if (ctx.session.ticketCobro == 1)
        impresora.imprimir(juego.recibo(DatosCobro{ctx.session.ch, ctx.session.usuario, hoy,
                                                   horaTexto(ctx.clock.now().time()), consulta.codigo, pago->monto,
                                                   ctx.session.enDolares()},
                                        impresora.grafico()));
    return pago->monto;
}

// ---------------------------------------------------------------- void

std::optional<Row> bloquearBoleto(Db& db, const Juego& juego, long long numero) {
    const Recordset rs = db.query(sql({"SELECT * FROM ", juego.tabla, " Where numero = ? FOR UPDATE"}), {numero});
    if (rs.empty()) return std::nullopt;
    return rs.first();
}

ResultadoAnulacion anular(Db& db, const Juego& juego, long long numero, const ReglasAnulacion& r,
                          const QString& motivo, const QString& usuario) {
    return db.inTransaction([&] {
        const std::optional<Row> b = bloquearBoleto(db, juego, numero);
        // Gone, or no longer the ticket that was looked up (voided meanwhile).
        if (!b || (!r.codigo.isEmpty() && b->text(juego.codigo) != r.codigo) ||
            (r.ambito && b->text(r.ambito) != r.valorAmbito) || (r.dentro && !r.dentro(db, *b)))
            return ResultadoAnulacion::NoEncontrado;
        const Estatus e = estatusDe(*b);
        if ((!r.noAntesDe.isEmpty() && b->text("fecha") < r.noAntesDe) ||
            (r.soloVendidos && e != Estatus::Vendido) || (r.nuncaLiquidados && liquidado(e)))
            return ResultadoAnulacion::NoAnulable;
        if (!r.forzado && juego.cerrado && juego.cerrado(db, *b)) return ResultadoAnulacion::Cerrado;
        if (r.noSiVentaCerrada && juego.ventaCerrada && juego.ventaCerrada(db, *b))
            return ResultadoAnulacion::VentaCerrada;
        insertar(db, juego.anotacion(*b, motivo, usuario, Estatus::Anulado));
        anotar(db, asiento(operacion::Anulacion, juego, *b, b->number("cobrado")));
        // By the key alone, as the row was locked (see cobrar).
        db.exec(sql({"delete from  ", juego.tabla, "  Where numero = ? limit 1 "}), {numero});
        if (juego.alAnular) juego.alAnular(db, *b);
        return ResultadoAnulacion::Anulado;
    });
}

namespace {

const QString kEliminadoPorAdmin = QStringLiteral("ELIMINADO POR EL ADMIN");

}  // namespace

const QStringList& codigosAdministrador() {
    static const QStringList codigos{QStringLiteral("QWPLR850264"), QStringLiteral("KTR384")};
    return codigos;
}

bool motivoCabe(Context& ctx, const QString& motivo) {
    const QString largo = textoDemasiadoLargo(QStringLiteral("EL MOTIVO"), motivo, kLargoMotivo);
    if (largo.isEmpty()) return true;
    ctx.dialogs.refuse(texto::TituloVerificacionSistema, largo);
    return false;
}

namespace {

// The answer of an input box, trimmed; nullopt when cancelled.
std::optional<QString> preguntar(Context& ctx, const QString& titulo, const QString& texto,
                                 const QString& inicial = {}) {
    const std::optional<QString> r = ctx.dialogs.ask(titulo, texto, inicial);
    if (!r) return std::nullopt;
    return r->trimmed();
}

}  // namespace

PuntoAnulacion puntoTaquilla(const QString& ventana, const QString& titulo, const QString& centro) {
    PuntoAnulacion p;
    p.ventana = ventana;
    p.titulo = titulo;
    p.tituloMotivo = texto::TituloMotivoAnulacion;
    p.avisaSinMotivo = true;
    p.ambito = "ch";
    p.valorAmbito = centro;
    p.noEncontrado = texto::BoletoNoAnulableSinCodigo;
    p.soloDelDia = true;
    p.soloVendidos = true;
    return p;
}

ResultadoAnulacion anularBoleto(Context& ctx, const Juego& juego, const PuntoAnulacion& p, long long numero) {
    QString codigo;
    if (p.pideCodigo) {
        const auto c = preguntar(ctx, texto::TituloCodigoBoleto,
                                 p.textoCodigo.isEmpty() ? texto::IngreseCodigoBoleto : p.textoCodigo);
        if (!c || c->isEmpty()) return ResultadoAnulacion::Cancelada;
        codigo = *c;
    } else if (numero <= 0) {
        ctx.dialogs.refuse(p.titulo, p.noEncontrado);
        return ResultadoAnulacion::NoEncontrado;
    }
    const auto motivo = p.pideMotivo ? preguntar(ctx, p.tituloMotivo, texto::IngreseMotivo, texto::MotivoAnulado)
                                     : std::optional<QString>(texto::MotivoAnulado);
    if (!motivo) return ResultadoAnulacion::Cancelada;
    if (motivo->isEmpty()) {
        if (p.avisaSinMotivo) ctx.dialogs.refuse(texto::TituloVerificacionSistema, texto::SinMotivo);
        return ResultadoAnulacion::Cancelada;
    }
    if (!motivoCabe(ctx, *motivo)) return ResultadoAnulacion::Cancelada;
    const bool forzado = p.codigosAdmin.contains(*motivo);
    // No administrator's code is ever written into the log, whatever command it was typed in.
    const QString anotado = codigosAdministrador().contains(*motivo) ? kEliminadoPorAdmin : *motivo;

    ReglasAnulacion reglas;
    reglas.codigo = codigo;
    reglas.ambito = p.ambito;
    reglas.valorAmbito = p.valorAmbito;
    reglas.noAntesDe = p.soloDelDia ? fechaTrabajo(ctx) : QString();
    reglas.soloVendidos = p.soloVendidos;
    reglas.nuncaLiquidados = p.nuncaLiquidados;
    reglas.forzado = forzado;
    reglas.noSiVentaCerrada = p.noSiVentaCerrada;
    reglas.dentro = p.dentro;

    const auto resultado = intentar(ctx, p.ventana, [&] {
        Db& db = ctx.servidor();
        if (p.pideCodigo) {
            std::string consulta = sql({"SELECT * FROM ", juego.tabla, " Where ", juego.codigo, "=?"});
            Params params{codigo};
            if (p.ambito) {
                consulta += sql({" and ", p.ambito, "=? "});
                params.push_back(p.valorAmbito);
            }
            const Recordset rs = db.query(consulta, params);
            if (rs.empty()) return ResultadoAnulacion::NoEncontrado;
            if (p.confirmar && !p.confirmar(db, rs.first())) return ResultadoAnulacion::Cancelada;
            numero = rs.first().integer("numero");
        }
        return anular(db, juego, numero, reglas, anotado, ctx.session.usuario);
    });
    if (!resultado) return ResultadoAnulacion::Error;
    switch (*resultado) {
    case ResultadoAnulacion::NoEncontrado: ctx.dialogs.refuse(p.titulo, p.noEncontrado); break;
    case ResultadoAnulacion::NoAnulable: ctx.dialogs.refuse(p.titulo, texto::BoletoNoAnulable); break;
    case ResultadoAnulacion::Cerrado: ctx.dialogs.refuse(p.titulo, juego.textoCerrado); break;
    case ResultadoAnulacion::VentaCerrada: ctx.dialogs.refuse(p.titulo, texto::CarreraCerradaSinCambios); break;
    case ResultadoAnulacion::Anulado: ctx.dialogs.inform(p.titulo, texto::BoletoAnulado); break;
    case ResultadoAnulacion::Cancelada:
    case ResultadoAnulacion::Error: break;
    }
    return *resultado;
}

}  // namespace hipico
