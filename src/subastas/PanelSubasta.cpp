#include "subastas/PanelSubasta.h"

#include "admin/ProcesoCarrera.h"
#include "core/Context.h"
#include "core/Guardia.h"
#include "gui/Campos.h"
#include "gui/Teclado.h"
#include "subastas/DisenoSubasta.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace hipico {

namespace {

QString encabezado(const QString& columna) { return QLatin1Char(' ') + columna.toUpper() + QLatin1Char(' '); }

}  // namespace

PanelSubasta::PanelSubasta(Context& ctx, std::function<Seleccion()> seleccion, QWidget* parent)
    : QWidget(parent), ctx_(ctx), celdas_(ctx), seleccion_(std::move(seleccion)) {
    setObjectName(QStringLiteral("panelSubasta"));
    aviso_ = new QLabel(this);
    aviso_->setObjectName(QStringLiteral("avisoSubasta"));
    tabla_ = new QTableWidget(this);
    tabla_->setObjectName(QStringLiteral("celdasSubasta"));
    QStringList cabeceras{QStringLiteral(" ID "), QStringLiteral(" CABALLO "), QStringLiteral(" RET ")};
    for (const QString& c : CeldasSubasta::columnas()) cabeceras << encabezado(c);
    tabla_->setColumnCount(static_cast<int>(cabeceras.size()));
    tabla_->setHorizontalHeaderLabels(cabeceras);
    tabla_->verticalHeader()->hide();
    tabla_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tabla_->setColumnHidden(0, true);
    connect(tabla_, &QTableWidget::cellChanged, this, &PanelSubasta::celdaCambiada);

    ganador_ = caja(QStringLiteral("ganadorSubasta"), this, 2, SoloNumeros, 60);
    QPushButton* cambiar = boton(QStringLiteral("Cambiar ganador de la subasta"), QStringLiteral("cambiarGanador"), this);
    connect(cambiar, &QPushButton::clicked, this, &PanelSubasta::cambiarGanador);
    enterEjecuta(ganador_, [cambiar] { cambiar->click(); });
    auto* ayuda = new QLabel(QStringLiteral("Para cuando el ganador del remate sea diferente al ganador oficial"), this);
    ayuda->setObjectName(QStringLiteral("ayudaGanador"));
    porcentajes_ = new QLabel(this);
    porcentajes_->setObjectName(QStringLiteral("porcentajesSubasta"));

    auto* abajo = new QHBoxLayout;
    abajo->addWidget(new QLabel(QStringLiteral("Ganador:"), this));
    abajo->addWidget(ganador_);
    abajo->addWidget(cambiar);
    abajo->addWidget(ayuda);
    abajo->addStretch();
    auto* raiz = new QVBoxLayout(this);
    raiz->addWidget(aviso_);
    raiz->addWidget(tabla_, 1);
    raiz->addLayout(abajo);
    raiz->addWidget(porcentajes_);
}

bool PanelSubasta::guardado(const std::function<void()>& fn) {
    return proteger(ctx_, window()->objectName(), fn);
}

void PanelSubasta::refrescar() {
    mostrada_ = seleccion_();
    cargando_ = true;
    tabla_->setRowCount(0);
    const bool todos = !mostrada_.centroElegido();
    aviso_->setText(todos ? QStringLiteral("ELIJA UN CENTRO PARA VER SU SUBASTA")
                          : QStringLiteral("Subasta de la carrera %1 en %2").arg(mostrada_.carrera).arg(mostrada_.centro));
    guardado([&] {
        porcentajes_->setText(celdas_.porcentajes(mostrada_).join(QStringLiteral("    ")));
        if (todos) return;
        const Recordset rs = celdas_.cargar(mostrada_);
        if (rs.empty()) aviso_->setText(kSinSubasta + QStringLiteral(" EN ") + mostrada_.centro);
        tabla_->setRowCount(rs.size());
        for (int i = 0; i < rs.size(); ++i) {
            const Row& r = rs[i];
            const auto fija = [](const QString& texto) {
                auto* item = new QTableWidgetItem(texto);
                item->setFlags(item->flags() & ~Qt::ItemIsEditable);
                return item;
            };
            tabla_->setItem(i, 0, fija(r.text("id_carrera")));
            tabla_->setItem(i, 1, fija(r.text("caballo")));
            tabla_->setItem(i, 2, fija(r.integer("retirado") != 0 ? QStringLiteral("RET") : QString()));
            int c = 3;
            for (const QString& columna : CeldasSubasta::columnas())
                tabla_->setItem(i, c++, new QTableWidgetItem(r.text(columna)));
        }
    });
    cargando_ = false;
}

void PanelSubasta::celdaCambiada(int fila, int columna) {
    if (cargando_ || columna < 3) return;
    const QString nombre = CeldasSubasta::columnas().value(columna - 3);
    const long long id = tabla_->item(fila, 0)->text().toLongLong();
    const QString texto = tabla_->item(fila, columna)->text();
    guardado([&] { celdas_.escribir(mostrada_, id, nombre, texto); });
    // The grid is rebuilt once the edit that changed it has ended.
    QTimer::singleShot(0, this, &PanelSubasta::refrescar);
}

void PanelSubasta::cambiarGanador() {
    const Seleccion s = seleccion_();
    bool hecho = false;
    guardado([&] { hecho = celdas_.cambiarGanador(s, ganador_->text()); });
    if (hecho) ganador_->clear();
    refrescar();
}

}  // namespace hipico
