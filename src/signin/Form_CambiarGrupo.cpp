#include "signin/Form_CambiarGrupo.h"

#include "core/Context.h"
#include "gui/Grilla.h"
#include "gui/RecordsetModel.h"
#include "gui/Teclado.h"
#include "signin/MenuPrincipal.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace hipico {

Form_CambiarGrupo::Form_CambiarGrupo(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_CambiarGrupo"), QStringLiteral("CAMBIAR GRUPO")), logica_(ctx) {
    actual_ = new QLabel(this);
    actual_->setObjectName("lblGrupoActual");
    modelo_ = new RecordsetModel(this);
    lista_ = grillaDe(modelo_, QStringLiteral("lstGrupos"), this);

    auto* cmdCambiar = new QPushButton(QStringLiteral("&Cambiar"), this);
    cmdCambiar->setObjectName("cmdCambiar");
    auto* cmdCerrar = new QPushButton(QStringLiteral("C&errar"), this);
    cmdCerrar->setObjectName("cmdCerrar");
    connect(cmdCambiar, &QPushButton::clicked, this, &Form_CambiarGrupo::cmdCambiar_Click);
    connect(cmdCerrar, &QPushButton::clicked, this, &QWidget::close);
    connect(lista_, &QTableView::doubleClicked, this, &Form_CambiarGrupo::cmdCambiar_Click);
    enterEjecuta(lista_, [this] { cmdCambiar_Click(); });
    enterPulsa(cmdCambiar);
    enterPulsa(cmdCerrar);

    auto* botones = new QHBoxLayout;
    botones->addStretch();
    botones->addWidget(cmdCambiar);
    botones->addWidget(cmdCerrar);
    auto* columna = new QVBoxLayout(this);
    columna->addWidget(actual_);
    columna->addWidget(lista_);
    columna->addLayout(botones);
    resize(420, 320);

    cargar();
    primerFoco(lista_);
}

void Form_CambiarGrupo::mostrarActual() {
    const Session& s = ctx_.session;
    actual_->setText("Grupo actual: " + s.grupo + (s.ch.isEmpty() ? QString() : " - " + s.ch));
}

void Form_CambiarGrupo::cargar() {
    mostrarActual();
    const Recordset grupos = intentar([this] { return logica_.grupos(); }).value_or(Recordset());
    const auto izquierda = Qt::AlignLeft | Qt::AlignVCenter;
    modelo_->setRecordset(grupos, {{QStringLiteral(" GRUPO "), QStringLiteral("grupo"), {}, izquierda},
                                   {QStringLiteral(" CENTRO HÍPICO "), QStringLiteral("ch"), {}, izquierda}});
    const int actual = grupos.find("grupo", ctx_.session.grupo);
    lista_->selectRow(actual >= 0 ? actual : 0);
}

void Form_CambiarGrupo::cmdCambiar_Click() {
    const QModelIndex i = lista_->currentIndex();
    if (!i.isValid()) return;
    const QString grupo = modelo_->recordset()[i.row()].text("grupo");
    if (!proteger([&] { return logica_.cambiar(grupo); })) return;
    mostrarActual();
    // The menu's caption and status bar follow the session's group.
    ctx_.ponerTituloMenu(MenuPrincipal::titulo(ctx_.session));
    close();
}

}  // namespace hipico
