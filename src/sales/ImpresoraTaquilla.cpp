#include "sales/ImpresoraTaquilla.h"

#include "core/Context.h"

namespace hipico {

bool ImpresoraTaquilla::grafico() const {
    return modoImpresora(ctx_.session.confLocal.puerto) == ModoImpresora::Grafica;
}

bool ImpresoraTaquilla::imprimir(const Impreso& impreso) {
    ultimo_ = impreso;
    const ConfLocal& conf = ctx_.session.confLocal;
    if (conf.impresion != 1) return true;
    try {
        crearImpresora(conf)->imprimir(impreso);
        return true;
    } catch (const ErrorImpresion& e) {
        ctx_.dialogs.refuse(QStringLiteral("IMPRESORA"), QStringLiteral("NO SE PUDO IMPRIMIR: ") + e.motivo());
        return false;
    }
}

bool ImpresoraTaquilla::reimprimir() { return ultimo_ && imprimir(*ultimo_); }

}  // namespace hipico
