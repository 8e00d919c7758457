#include "sales/VentaGanadores.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "core/Niveles.h"
#include "core/RegistroErrores.h"

#include <cmath>

namespace hipico {

namespace {

// The window's name in the error log.
const QString kVentanaVenta = QStringLiteral("Form_Venta_WIN");
// The title of the booth's void messages.
const QString kTituloAnulacion = QStringLiteral("ANULACION DE BOLETOS");
// How many of its latest tickets the booth lists.
constexpr int kBoletosDeLaLista = 60;

}  // namespace

VentaGanadores::VentaGanadores(Context& ctx) : ctx_(ctx), impresora_(ctx) {}

void VentaGanadores::cargar() {
    cargarImpresion(ctx_);
    unidad_ = leerUnidadVenta(ctx_.config);
}

bool VentaGanadores::enDolares() const { return ctx_.session.enDolares(); }

double VentaGanadores::valorGanador() const { return hipico::valorGanador(ctx_.session); }

QString VentaGanadores::montoPantalla(double monto) const {
    if (ctx_.session.mascara == 1) return QString::number(std::round(monto * 100) / 100, 'f', 2);
    return formatoMonto(monto, enDolares());
}

QString VentaGanadores::etiquetaMoneda() const { return enDolares() ? QStringLiteral("$") : QStringLiteral("BS"); }

long long VentaGanadores::carreraDelGrupo() const {
    return carreraYPista(ctx_).carrera;
}

// ---------------------------------------------------------------- sale

VentaGanadores::Venta VentaGanadores::vender(const PedidoGanador& pedido, const Row& grupo, bool guardado) {
    auto jugada = std::make_shared<VentaGanador>(ctx_, pedido, grupo, guardado);
    hipico::Venta v;
    try {
        v = hipico::vender(ctx_, kVentanaVenta, juegoGanadores(), *jugada, impresora_);
    } catch (const ParametrosCambiados&) {
        // Nothing was written: the same sale on the parameters as they are now.
        return vender(pedido, parametros_.leer(ctx_, pedido.carrera, pedido.caballo), false);
    } catch (const DbError&) {
        // The server went away before the sale could be looked up: it is
        // settled before the next sale.
        if (jugada->incierta) {
            incierta_ = jugada;
            registrarError(ctx_, kVentanaVenta, QStringLiteral("venta sin confirmar, ficha ") + jugada->ficha);
        }
        throw;
    }
    if (v.vendida()) {
        ultimo_ = jugada->boleto(v.numero, v.codigo);
        return {Resultado::Vendido, *ultimo_};
    }
    const Campo campo = v.rechazo ? campoDe(v.rechazo->texto) : Campo::Monto;
    // A refusal the supervisor may authorise opens the password frame, when the group asks for it.
    if (!v.rechazo || !v.rechazo->autorizable || grupo.integerOr("pedirclave") != 1)
        return {Resultado::Rechazado, {}, campo};
    pendiente_ = Pendiente{pedido, grupo};
    return {Resultado::PedirClave, {}, campo};
}

VentaGanadores::Campo VentaGanadores::campoDe(const QString& rechazo) {
    // The race's own refusals, the horse's, the client's; the rest are about the amount.
    if (rechazo == texto::CarreraNoPermitida || rechazo.startsWith(QLatin1String("LA CARRERA"))) return Campo::Carrera;
    if (rechazo == texto::CaballoNoValido || rechazo == texto::CaballoNoExiste || rechazo == texto::CaballoRetirado ||
        rechazo == texto::CupoLleno || rechazo.startsWith(QLatin1String("NO SE VENDE CON")))
        return Campo::Caballo;
    if (rechazo.startsWith(QLatin1String("EL CLIENTE NO EXISTE"))) return Campo::Cliente;
    return Campo::Monto;
}

bool VentaGanadores::revisarCaballo(const QVector<CorredorCarrera>& corredores, const QString& caballo) {
    if (corredores.isEmpty()) return true;
    const std::optional<long long> n = leerEntero(caballo);
    for (const CorredorCarrera& c : corredores) {
        if (!n || c.numero != *n) continue;
        if (!c.retirado) return true;
        ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, texto::CaballoRetirado);
        return false;
    }
    ctx_.dialogs.refuse(texto::TituloVerifiqueIntente, texto::CaballoNoValido);
    return false;
}

QString VentaGanadores::textoCosto(const QString& monto) const {
    double tecleado = 0;
    const double valor = valorGanador();
    if (!leerMonto(monto, tecleado) || tecleado <= 0 || valor <= 0) return {};
    if (unidad_ == UnidadVenta::Ganadores) return QStringLiteral("COSTO: ") + montoPantalla(tecleado * valor);
    return QStringLiteral("= ") + textoUnidades(tecleado / valor) + QStringLiteral(" GANADORES");
}

VentaGanadores::Venta VentaGanadores::procesarVenta(const QString& carrera, const QString& caballo,
                                                    const QString& monto, const QString& cliente) {
    pendiente_.reset();
    // A sale whose outcome is still unknown comes first: stored, it is this
    // sale (the customer gets that ticket now); absent, the typed sale goes on.
    if (incierta_) {
        const hipico::Venta v = hipico::resolverVenta(ctx_, juegoGanadores(), *incierta_, impresora_, false);
        const std::shared_ptr<VentaGanador> anterior = std::move(incierta_);
        if (v.vendida()) {
            ultimo_ = anterior->boleto(v.numero, v.codigo);
            return {Resultado::Vendido, *ultimo_};
        }
    }
    const PedidoGanador pedido{carrera, caballo, monto, cliente, unidad_, false};
    // The group's parameters kept since an earlier sale are checked under the
    // horse's lock; none kept, they are read now.
    if (const std::optional<Row> guardados = parametros_.buscar(ctx_, carrera, caballo))
        return vender(pedido, *guardados, true);
    return vender(pedido, parametros_.leer(ctx_, carrera, caballo), false);
}

VentaGanadores::Venta VentaGanadores::ventaConClave(const QString& clave) {
    if (!pendiente_) return {};
    Pendiente p = *pendiente_;
    pendiente_.reset();
    const QString claveGrupo = p.grupo.textOr("clave_win");
    if (claveGrupo.isEmpty() || clave != claveGrupo) {
        ctx_.dialogs.refuse(QStringLiteral("Permiso de Venta Negado"), QStringLiteral("La Clave Fue Incorrecta"));
        return {};
    }
    p.pedido.autorizada = true;
    // The refused sale's parameters, checked under the lock like kept ones.
    return vender(p.pedido, p.grupo, true);
}

// ---------------------------------------------------------------- payment

VentaGanadores::Consulta VentaGanadores::buscarBoletoCobro(const QString& codigo) {
    return porCobrar_.buscar(ctx_, juegoGanadores(), codigo);
}

bool VentaGanadores::cobrarBoleto() {
    return porCobrar_.cobrar(ctx_, kVentanaVenta, juegoGanadores(), impresora_);
}

// ---------------------------------------------------------------- void

bool VentaGanadores::puedeAnular() const {
    return !esNivelTaquilla(ctx_.session.nivel) || ctx_.session.anularBoletoWin == 1;
}

bool VentaGanadores::anularBoleto(long long numero) {
    if (!puedeAnular()) {
        ctx_.dialogs.refuse(kTituloAnulacion, texto::SinAcceso);
        return false;
    }
    // The ticket is shown before it goes, and goes only on "Sí".
    const auto confirmar = [this](const BoletoDia& b) {
        return ctx_.dialogs.confirm(kTituloAnulacion,
                                    QStringLiteral("¿DESEA ANULAR ESTE BOLETO?\n\n") +
                                        descripcionBoleto(b, enDolares()),
                                    true, Icon::Question);
    };
    PuntoAnulacion p = puntoTaquilla(kVentanaVenta, kTituloAnulacion, ctx_.session.ch);
    // The setting that keeps a booth from voiding a ticket once its race is closed (off by default).
    p.noSiVentaCerrada = Row::toInteger(ctx_.servidor().scalar("SELECT no_anular_cerrada FROM configuracion")) == 1;
    long long elegido = numero;
    if (numero > 0) {
        p.pideCodigo = false;
        const std::optional<BoletoDia> b = boletoVigente(ctx_, numero);
        if (!b) {
            ctx_.dialogs.refuse(kTituloAnulacion, p.noEncontrado);
            return false;
        }
        if (!confirmar(*b)) return false;
    } else {
        p.confirmar = [this, confirmar, &elegido](Db&, const Row& fila) {
            elegido = fila.integer("numero");
            const std::optional<BoletoDia> b = boletoVigente(ctx_, elegido);
            return b && confirmar(*b);
        };
    }
    const bool anulado = hipico::anularBoleto(ctx_, juegoGanadores(), p, numero) == ResultadoAnulacion::Anulado;
    // The last ticket sold, once voided, is no longer the booth's last ticket.
    if (anulado && ultimo_ && ultimo_->numero == elegido) ultimo_.reset();
    return anulado;
}

// ---------------------------------------------------------------- the booth's tickets

bool VentaGanadores::reimprimir(long long numero) {
    if (numero <= 0) {
        if (!ultimo_) {
            ctx_.dialogs.refuse(kTituloReimpresion, QStringLiteral("NO HAY UN BOLETO VENDIDO PARA REIMPRIMIR"));
            return false;
        }
        numero = ultimo_->numero;
    }
    const std::optional<Impreso> copia = copiaGanador(ctx_, numero, impresora_.grafico());
    if (!copia) {
        if (ultimo_ && ultimo_->numero == numero) ultimo_.reset();
        return false;
    }
    return impresora_.imprimir(*copia);
}

QVector<BoletoDia> VentaGanadores::boletosDelDia() { return hipico::boletosDelDia(ctx_, kBoletosDeLaLista); }

// ---------------------------------------------------------------- cash-up

TramoCaja VentaGanadores::desdeUltimoCuadre() { return hipico::desdeUltimoCuadre(ctx_); }

bool VentaGanadores::cuadreFinal() {
    const std::optional<QString> texto =
        ctx_.dialogs.ask(kTituloCuadreCaja, QStringLiteral("MONTO CONTADO EN CAJA (") + etiquetaMoneda() +
                                                QStringLiteral(")"));
    if (!texto) return false;
    double contado = 0;
    if (!leerMonto(texto->trimmed(), contado) || contado < 0) {
        ctx_.dialogs.refuse(kTituloCuadreCaja, texto::MontoNoValido);
        return false;
    }
    const CuadreCaja c = registrarCuadre(ctx_, contado);
    const QStringList cuadre = lineasCuadre(c, ctx_.session.usuario, enDolares());
    // The day's summary first (when the confirmation rule lets it out), the cash-up under it.
    Impreso pieza = resumenGanadores(ctx_, 0, 0, impresora_.grafico()).value_or(Impreso());
    pieza.lineas << cuadre;
    impresora_.imprimir(pieza);
    ctx_.dialogs.inform(kTituloCuadreCaja, cuadre.mid(cuadre.size() - 3).join(QLatin1Char('\n')));
    return true;
}

// ---------------------------------------------------------------- totals and lists

TotalesDia VentaGanadores::Cuadrar(long long desde, long long hasta) {
    return totalesGanadores(ctx_, desde, hasta);
}

QVector<VentaGanadores::VentaCaballo> VentaGanadores::Calcular_VentasCaballos(long long carrera) {
    return ventasPorCaballo(ctx_, carrera);
}

QVector<VentaGanadores::Corredor> VentaGanadores::corredores(long long carrera) {
    return corredoresDe(ctx_, carrera);
}

QVector<VentaGanadores::CarreraDia> VentaGanadores::carreras() {
    return carrerasDelDia(ctx_);
}

bool VentaGanadores::imprimirResumen(long long desde, long long hasta) {
    const auto resumen = resumenGanadores(ctx_, desde, hasta, impresora_.grafico());
    return resumen && impresora_.imprimir(*resumen);
}

// ---------------------------------------------------------------- sale unit

bool VentaGanadores::cambiarUnidad(UnidadVenta nueva) {
    const QString nombre = nueva == UnidadVenta::Ganadores ? QStringLiteral("GANADORES") : QStringLiteral("BOLIVARES");
    if (!ctx_.dialogs.confirm(QStringLiteral("Confirmar el Cambio"),
                              QStringLiteral("¿Esta usted seguro de querer cambiar la unidad de venta a ") + nombre +
                                  QStringLiteral("?")))
        return false;
    guardarUnidadVenta(ctx_.config, nueva);
    unidad_ = nueva;
    ctx_.dialogs.inform(QStringLiteral("Parametros de Venta"), QStringLiteral("Los cambios se hicierón con exíto"));
    return true;
}

}  // namespace hipico
