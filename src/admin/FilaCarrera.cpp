#include "admin/FilaCarrera.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace hipico {

FilaCarrera filaCarrera(Context& ctx, QWidget* ventana, QBoxLayout* raiz, const PedidoFilaCarrera& pedido,
                        std::function<void()> refrescar) {
    FilaCarrera f;
    auto* arriba = new QHBoxLayout;
    f.fecha = selectorFecha(pedido.nombreFecha);
    f.fecha->setDate(desdeFechaSql(pedido.fecha));
    arriba->addWidget(new QLabel(QStringLiteral("FECHA")));
    arriba->addWidget(f.fecha);
    if (pedido.conHipodromo) {
        f.hipodromo = new QComboBox;
        f.hipodromo->setObjectName(QStringLiteral("hipodromo"));
        f.hipodromo->addItems(pedido.hipodromos);
        f.hipodromo->setCurrentText(pedido.hipodromo);
        arriba->addWidget(new QLabel(QStringLiteral("HIPODROMO")));
        arriba->addWidget(f.hipodromo);
        QObject::connect(f.hipodromo, &QComboBox::currentTextChanged, ventana, refrescar);
    }
    f.carrera = listaCarreras(QStringLiteral("carrera"));
    f.carrera->setCurrentText(
        QString::number(leerEntero(ctx.session.ajusteTexto(QStringLiteral("carrera"))).value_or(1)));
    arriba->addWidget(new QLabel(QStringLiteral("CARRERA")));
    arriba->addWidget(f.carrera);
    f.actualizar = boton(QStringLiteral("Actualizar"), QStringLiteral("actualizar"));
    arriba->addWidget(f.actualizar);
    arriba->addStretch(1);
    raiz->addLayout(arriba);

    QObject::connect(f.actualizar, &QPushButton::clicked, ventana, refrescar);
    QObject::connect(f.carrera, &QComboBox::currentTextChanged, ventana, refrescar);
    QObject::connect(f.fecha, &QDateEdit::dateChanged, ventana, refrescar);
    f.reloj = new QTimer(ventana);
    f.reloj->setInterval(10000);
    QObject::connect(f.reloj, &QTimer::timeout, ventana, refrescar);
    f.reloj->start();
    return f;
}

}  // namespace hipico
