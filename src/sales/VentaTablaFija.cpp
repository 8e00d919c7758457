#include "sales/VentaTablaFija.h"

#include "core/Context.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "core/RegistroErrores.h"
#include "core/Textos.h"
#include "sales/AjustesLocales.h"
#include "sales/JuegoGanadores.h"

namespace hipico {

namespace {

const QString kVentana = QStringLiteral("Form_Venta_TF");
const QString kTituloResumen = QStringLiteral("VERIFIQUE LA INFORMACION");
const QString kTituloAnulacion = QStringLiteral("ANULACION DE TABLAS");

}  // namespace

VentaTablaFija::VentaTablaFija(Context& ctx) : ctx_(ctx), impresora_(ctx) {}

void VentaTablaFija::cargar() { cargarImpresion(ctx_); }

bool VentaTablaFija::enDolares() const { return ctx_.session.enDolares(); }

long long VentaTablaFija::carreraDelGrupo() const { return carreraYPista(ctx_).carrera; }

// ---------------------------------------------------------------- sale

VentaTablaFija::Venta VentaTablaFija::procesarVenta(const QString& carrera, const QString& caballo,
                                                    const QString& tablas) {
    // A sale whose outcome is still unknown comes first: stored, it is this sale.
    if (incierta_) {
        const hipico::Venta v = resolverVenta(ctx_, juegoTablaFija(), *incierta_, impresora_, false);
        const std::shared_ptr<JugadaTablaFija> anterior = std::move(incierta_);
        if (v.vendida()) {
            ultimo_ = anterior->boleto(v.numero, v.codigo);
            return {Resultado::Vendido, *ultimo_};
        }
    }
    auto jugada = std::make_shared<JugadaTablaFija>(ctx_, PedidoTablaFija{carrera, caballo, tablas},
                                                    parametrosTablaFija(ctx_, carrera, caballo));
    // The checks first, over rows read without holding them: the operator is
    // never asked while rows are locked.
    Db& db = ctx_.servidor();
    jugada->preparar(db);
    jugada->bloquear(db);
    for (const Jugada::Chequeo& chequeo : jugada->chequeos())
        if (const std::optional<Rechazo> r = chequeo()) {
            ctx_.dialogs.message(r->icono, r->titulo, r->texto);
            return {};
        }
    if (!ctx_.dialogs.confirm(kTituloResumen, jugada->resumen(enDolares()), false, Icon::Question))
        return {Resultado::Declinado, {}};
    jugada->confirmar();
    hipico::Venta v;
    try {
        v = vender(ctx_, kVentana, juegoTablaFija(), *jugada, impresora_);
    } catch (const DbError&) {
        if (jugada->incierta) {
            incierta_ = jugada;
            registrarError(ctx_, kVentana, QStringLiteral("venta sin confirmar, ficha ") + jugada->ficha);
        }
        throw;
    }
    if (!v.vendida()) return {};
    ultimo_ = jugada->boleto(v.numero, v.codigo);
    return {Resultado::Vendido, *ultimo_};
}

// ---------------------------------------------------------------- payment

ConsultaCobro VentaTablaFija::buscarBoletoCobro(const QString& codigo) {
    return porCobrar_.buscar(ctx_, juegoTablaFija(), codigo);
}

bool VentaTablaFija::cobrarBoleto() {
    return porCobrar_.cobrar(ctx_, kVentana, juegoTablaFija(), impresora_);
}

// ---------------------------------------------------------------- void

bool VentaTablaFija::anularUltimo() {
    const Recordset rs = ctx_.servidor().query(
        "SELECT * FROM tablafija WHERE ch=?   order by numero desc limit 1   ", {ctx_.session.ch});
    PuntoAnulacion p = puntoTaquilla(kVentana, kTituloAnulacion, ctx_.session.ch);
    p.pideCodigo = false;
    if (rs.empty()) {
        ctx_.dialogs.refuse(kTituloAnulacion, p.noEncontrado);
        return false;
    }
    // The ticket that goes is shown first.
    const Row& b = rs.first();
    const QString detalle = QStringLiteral("¿DESEA ANULAR ESTE BOLETO?\n\nBOLETO: %1\nCARRERA: %2  CABALLO: %3\n"
                                           "TABLAS: %4  MONTO: %5")
                                .arg(b.text("nu_boleto"))
                                .arg(b.integer("carrera"))
                                .arg(b.integer("caballo"))
                                .arg(textoUnidades(b.number("tablas")), formatoMonto(b.number("monto"), enDolares()));
    if (!ctx_.dialogs.confirm(kTituloAnulacion, detalle, true, Icon::Question)) return false;
    const long long numero = b.integer("numero");
    const bool anulado = anularBoleto(ctx_, juegoTablaFija(), p, numero) == ResultadoAnulacion::Anulado;
    if (anulado && ultimo_ && ultimo_->numero == numero) ultimo_.reset();
    return anulado;
}

// ---------------------------------------------------------------- figures

TotalesDia VentaTablaFija::Totalizar_Dia() { return totalesTablaFija(ctx_, 0, 0); }

bool VentaTablaFija::imprimirResumen(long long desde, long long hasta) {
    return impresora_.imprimir(resumenTablaFija(ctx_, desde, hasta, impresora_.grafico()));
}

QVector<CaballoTablaFija> VentaTablaFija::caballos(long long carrera) {
    return caballosTablaFija(ctx_, carrera, ctx_.session.ch);
}

}  // namespace hipico
