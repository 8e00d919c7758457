#include "sales/ImpresoraTaquilla.h"

#include "core/Context.h"

namespace hipico {

bool ImpresoraTaquilla::grafico() const {
    return modoImpresora(ctx_.session.confLocal.puerto) == ModoImpresora::Grafica;
}

bool ImpresoraTaquilla::imprimir(const Impreso& impreso) {
    const ConfLocal& conf = ctx_.session.confLocal;
    if (conf.impresion != 1) return true;
    try {
        crearImpresora(conf)->imprimir(impreso);
        return true;
    } catch (const ErrorImpresion& e) {
        ctx_.dialogs.refuse(QStringLiteral("IMPRESORA"),
                            impreso.siNoSale.isEmpty()
                                ? QStringLiteral("NO SE PUDO IMPRIMIR: ") + e.motivo()
                                : impreso.siNoSale + QStringLiteral("\n\nMOTIVO: ") + e.motivo());
        return false;
    }
}

}  // namespace hipico
