#include "sales/VentaMacuare.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "core/Openers.h"
#include "core/RegistroErrores.h"
#include "core/Textos.h"
#include "sales/AjustesLocales.h"
#include "sales/BoletosTaquilla.h"

#include <cmath>

namespace hipico {

namespace {

// The window's name in the error log.
const QString kVentanaVentaMC = QStringLiteral("form_Venta_MC");
const QString kBoletoNoExiste = QStringLiteral("BOLETO NO EXISTE");
const QString kNoAnulable = QStringLiteral("NO SE PUEDE ANULAR ESTE BOLETO");

}  // namespace

VentaMacuare::VentaMacuare(Context& ctx) : ctx_(ctx), impresora_(ctx) {}

void VentaMacuare::cargar() { cargarImpresion(ctx_); }

QString VentaMacuare::estado() {
    return macuareAbierto(ctx_.servidor(), fechaTrabajo(ctx_)) ? QString() : QStringLiteral("CERRADO");
}

QVector<long long> VentaMacuare::piernas() {
    const DiaMacuare d = diaMacuare(ctx_.servidor(), fechaTrabajo(ctx_));
    QVector<long long> v;
    if (!d.existe) return v;
    for (int i = 0; i < kPiernas; ++i) v << d.carrera(i);
    return v;
}

long long VentaMacuare::combinacionesDelDia() {
    AbrirCombinaciones(ctx_);
    const Recordset& rs = ctx_.rs(QStringLiteral("rsCombinaciones"));
    const QString fecha = fechaTrabajo(ctx_);
    long long n = 0;
    for (const Row& r : rs)
        if (r.text("fecha") == fecha && r.number("monto") > 0) ++n;
    return n;
}

QString VentaMacuare::montoPantalla(double monto) const { return formatoMonto(monto, ctx_.session.enDolares()); }

// ---------------------------------------------------------------- sale

VentaMacuare::Resultado VentaMacuare::vender(const PedidoMacuare& pedido) {
    // A sale whose outcome is still unknown comes first: stored, it is this sale.
    if (incierta_) {
        const Venta v = resolverVenta(ctx_, juegoMacuare(), *incierta_, impresora_, false);
        const std::shared_ptr<JugadaMacuare> anterior = std::move(incierta_);
        if (v.vendida()) {
            ultimo_ = anterior->boleto(v.numero, v.codigo);
            return {true, *ultimo_, -1};
        }
    }
    const Row grupo = parametrosMacuare(ctx_);
    diasValidez_ = static_cast<int>(grupo.integerOr("duracionboletos"));
    auto jugada = std::make_shared<JugadaMacuare>(ctx_, pedido, grupo);
    Venta v;
    try {
        v = hipico::vender(ctx_, kVentanaVentaMC, juegoMacuare(), *jugada, impresora_);
    } catch (const DbError&) {
        if (jugada->incierta) {
            incierta_ = jugada;
            registrarError(ctx_, kVentanaVentaMC, QStringLiteral("venta sin confirmar, ficha ") + jugada->ficha);
        }
        throw;
    }
    if (!v.vendida()) return {false, {}, jugada->piernaRechazada()};
    ultimo_ = jugada->boleto(v.numero, v.codigo);
    return {true, *ultimo_, -1};
}

bool VentaMacuare::reimprimir() {
    if (!ultimo_) {
        ctx_.dialogs.refuse(kTituloReimpresion, QStringLiteral("NO HAY UN BOLETO VENDIDO PARA REIMPRIMIR"));
        return false;
    }
    // A ticket voided since is never printed again.
    if (ctx_.servidor().query("SELECT numero FROM macuares WHERE numero = ? and boleto = ?",
                              {ultimo_->numero, ultimo_->codigo})
            .empty()) {
        ultimo_.reset();
        ctx_.dialogs.refuse(kTituloReimpresion, texto::VerifiqueNumeroBoleto);
        return false;
    }
    const Impreso original = ticketMacuare(ctx_, *ultimo_, diasValidez_, impresora_.grafico());
    return impresora_.imprimir(
        copiaBoleto(original, fechaVista(fechaTrabajo(ctx_)), horaTexto(ctx_.clock.now().time())));
}

// ---------------------------------------------------------------- payment

ConsultaCobro VentaMacuare::buscarBoletoCobro(const QString& codigo) {
    porCobrar_.reset();
    porCobrar_ = consultarCobro(ctx_, juegoMacuare(), codigo);
    return porCobrar_.value_or(ConsultaCobro{});
}

bool VentaMacuare::cobrarBoleto() {
    if (!porCobrar_) return false;
    const ConsultaCobro pedido = *porCobrar_;
    porCobrar_.reset();
    return cobrar(ctx_, kVentanaVentaMC, juegoMacuare(), pedido, impresora_).has_value();
}

// ---------------------------------------------------------------- void

bool VentaMacuare::anularPorCodigo(const QString& codigoTecleado) {
    const QString codigo = codigoTecleado.trimmed();
    Db& db = ctx_.servidor();
    const Recordset rs = codigo.isEmpty() ? Recordset()
                                          : db.query("SELECT numero FROM macuares Where boleto = ?", {codigo});
    if (rs.empty()) {
        ctx_.dialogs.refuse(texto::TituloAnulacionMacuares, kBoletoNoExiste);
        return false;
    }
    // Only this booth's tickets of the working day still unsettled (status 0).
    ReglasAnulacion r;
    r.codigo = codigo;
    r.ambito = "taquilla";
    r.valorAmbito = ctx_.session.ch;
    r.noAntesDe = fechaTrabajo(ctx_);
    r.soloVendidos = true;
    switch (anular(db, juegoMacuare(), rs.first().integer("numero"), r, texto::MotivoAnulado, ctx_.session.usuario)) {
    case ResultadoAnulacion::Anulado:
        if (ultimo_ && ultimo_->codigo == codigo) ultimo_.reset();
        ctx_.dialogs.inform(texto::TituloAnulacionMacuares, texto::BoletoAnulado);
        return true;
    case ResultadoAnulacion::Cerrado: ctx_.dialogs.refuse(texto::TituloAnulacionMacuares, texto::CarreraCerradaSinCambios); break;
    default: ctx_.dialogs.refuse(texto::TituloAnulacionMacuares, kNoAnulable); break;
    }
    return false;
}

// ---------------------------------------------------------------- totals

TotalesDia VentaMacuare::Totalizar_Dia() { return totalesMacuare(ctx_); }

QVector<BoletoMacuareVendido> VentaMacuare::Command19() { return listaMacuares(ctx_); }

bool VentaMacuare::imprimirResumen() { return impresora_.imprimir(resumenMacuare(ctx_, impresora_.grafico())); }

}  // namespace hipico
