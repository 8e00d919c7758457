#include "sales/ConfImpresion.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "core/Guardia.h"
#include "core/Textos.h"
#include "sales/AjustesLocales.h"
#include "sales/Juego.h"
#include "sales/Tickets.h"

namespace hipico {

namespace {

// The width of conf_local.puerto.
constexpr int kLargoPuerto = 10;

ConfLocal aConf(const ConfImpresion::Valores& v, ConfLocal base) {
    base.puerto = v.puerto.trimmed();
    base.impresion = v.imprimir ? 1 : 0;
    base.tamletra = v.tamLetra;
    base.codbarras = v.codigoBarras ? 1 : 0;
    return base;
}

}  // namespace

QStringList ConfImpresion::modos() {
    return {kPuertoGrafica, kPuertoCompartida, QStringLiteral("LPT1:"), QStringLiteral("/dev/lp0")};
}

ConfLocal ConfImpresion::cargar() {
    cargarImpresion(ctx_);
    return ctx_.session.confLocal;
}

QString ConfImpresion::avisoPuerto(const QString& puerto) {
    if (puerto.trimmed().size() <= kLargoPuerto) return {};
    return QStringLiteral("EL PUERTO NO PUEDE TENER MAS DE %1 CARACTERES").arg(kLargoPuerto);
}

bool ConfImpresion::validar(const Valores& v) {
    const QString puerto = v.puerto.trimmed();
    if (puerto.isEmpty()) {
        ctx_.dialogs.refuse(kTituloConfImpresion, QStringLiteral("DEBE INDICAR EL PUERTO DE LA IMPRESORA"));
        return false;
    }
    if (const QString aviso = avisoPuerto(puerto); !aviso.isEmpty()) {
        ctx_.dialogs.refuse(kTituloConfImpresion, aviso);
        return false;
    }
    if (v.tamLetra < 6 || v.tamLetra > 24) {
        ctx_.dialogs.refuse(kTituloConfImpresion, QStringLiteral("EL TAMAÑO DE LETRA DEBE ESTAR ENTRE 6 Y 24"));
        return false;
    }
    return true;
}

bool ConfImpresion::guardar(const Valores& v) {
    if (!validar(v)) return false;
    const ConfLocal conf = aConf(v, ctx_.session.confLocal);
    if (!proteger(ctx_, QStringLiteral("Form_ConfImpresion"), [&] { guardarConfImpresion(ctx_, conf); }))
        return false;
    ctx_.session.confLocal = conf;
    ctx_.dialogs.inform(kTituloConfImpresion, texto::CambiosRealizados);
    return true;
}

bool ConfImpresion::imprimirPrueba(const Valores& v) {
    if (!validar(v)) return false;
    const ConfLocal conf = aConf(v, ctx_.session.confLocal);
    const QDateTime ahora = ctx_.clock.now();
    const QString fecha = fechaTrabajo(ctx_);
    try {
        crearImpresora(conf)->imprimir(paginaPrueba(ctx_.session.ch, ctx_.session.usuario, fecha, horaTexto(ahora.time()),
                                                    modoImpresora(conf.puerto) == ModoImpresora::Grafica));
    } catch (const ErrorImpresion& e) {
        ctx_.dialogs.refuse(kTituloConfImpresion, QStringLiteral("NO SE PUDO IMPRIMIR: ") + e.motivo());
        return false;
    }
    return true;
}

}  // namespace hipico
