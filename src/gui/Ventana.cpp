#include "gui/Ventana.h"

#include "core/Context.h"
#include "gui/FormHelpers.h"

#include <QMdiSubWindow>
#include <QTimer>

namespace hipico {

void NucleoVentana::alMostrar() {
    if (abierta_) return;
    abierta_ = true;
    if (centrado_ == Centrado::SegunAjuste && ctx_.session.centrarform == 1) centrar();
    if (primerFoco_) primerFoco_->setFocus(Qt::OtherFocusReason);
}

void NucleoVentana::centrar() {
    auto* marco = qobject_cast<QMdiSubWindow*>(ventana_.parentWidget());
    if (!marco) {
        CentrarForm(&ventana_);
        return;
    }
    // Inside the main menu the frame moves, once the menu has given it its size.
    QTimer::singleShot(0, marco, [marco] {
        if (marco->isMaximized()) return;
        CentrarForm(marco);
        MantenerDentro(marco, marco->parentWidget());
    });
}

bool NucleoVentana::esEscape(const QKeyEvent& e) {
    return e.key() == Qt::Key_Escape && !(e.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier));
}

bool NucleoVentana::esCerrar(const QKeyEvent& e) {
    return e.key() == Qt::Key_F4 && (e.modifiers() & Qt::ControlModifier);
}

bool NucleoVentana::enSegundoPlano(const std::function<void()>& trabajo) {
    try {
        trabajo();
        avisado_ = false;
        return true;
    } catch (const DbError& e) {
        if (!avisado_) avisarFallo(ctx_, ventana_.objectName(), e);
        avisado_ = true;
        return false;
    }
}

}  // namespace hipico
