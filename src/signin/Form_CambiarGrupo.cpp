#include "signin/Form_CambiarGrupo.h"

#include "core/Context.h"
#include "core/RecordsetModel.h"
#include "signin/MenuPrincipal.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace hipico {

Form_CambiarGrupo::Form_CambiarGrupo(Context& ctx, QWidget* parent)
    : QWidget(parent), ctx_(ctx), logica_(ctx) {
    setObjectName("Form_CambiarGrupo");
    setWindowTitle(QStringLiteral("CAMBIAR GRUPO"));

    actual_ = new QLabel(this);
    actual_->setObjectName("lblGrupoActual");
    lista_ = new QTableView(this);
    lista_->setObjectName("lstGrupos");
    modelo_ = new RecordsetModel(this);
    lista_->setModel(modelo_);
    lista_->setSelectionBehavior(QAbstractItemView::SelectRows);
    lista_->setSelectionMode(QAbstractItemView::SingleSelection);
    lista_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lista_->verticalHeader()->hide();
    lista_->horizontalHeader()->setStretchLastSection(true);

    cmdCambiar_ = new QPushButton(QStringLiteral("&Cambiar"), this);
    cmdCambiar_->setObjectName("cmdCambiar");
    cmdCerrar_ = new QPushButton(QStringLiteral("C&errar"), this);
    cmdCerrar_->setObjectName("cmdCerrar");
    connect(cmdCambiar_, &QPushButton::clicked, this, &Form_CambiarGrupo::cmdCambiar_Click);
    connect(cmdCerrar_, &QPushButton::clicked, this, &QWidget::close);
    connect(lista_, &QTableView::doubleClicked, this, &Form_CambiarGrupo::cmdCambiar_Click);

    auto* botones = new QHBoxLayout;
    botones->addStretch();
    botones->addWidget(cmdCambiar_);
    botones->addWidget(cmdCerrar_);
    auto* columna = new QVBoxLayout(this);
    columna->addWidget(actual_);
    columna->addWidget(lista_);
    columna->addLayout(botones);
    resize(420, 320);

    cargar();
    lista_->setFocus();
}

void Form_CambiarGrupo::mostrarActual() {
    const Session& s = ctx_.session;
    actual_->setText("Grupo actual: " + s.grupo + (s.ch.isEmpty() ? QString() : " - " + s.ch));
}

void Form_CambiarGrupo::cargar() {
    mostrarActual();
    Recordset grupos;
    try {
        grupos = logica_.grupos();
    } catch (const DbError& e) {
        ctx_.dialogs.refuse(kTituloAcciones, e.text());
    }
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
    if (!logica_.cambiar(grupo)) return;
    mostrarActual();
    // The menu's caption and status bar follow the session's group.
    ctx_.ponerTituloMenu(MenuPrincipal::titulo(ctx_.session));
    close();
}

void Form_CambiarGrupo::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: cmdCambiar_Click(); return;
    case Qt::Key_Escape: close(); return;
    default: QWidget::keyPressEvent(event);
    }
}

}  // namespace hipico
