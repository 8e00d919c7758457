#include "sales/Form_Pant_TF.h"

#include "core/Context.h"
#include "core/Db.h"
#include "core/Formato.h"
#include "sales/JuegoGanadores.h"
#include "sales/JuegoTablaFija.h"

#include <QGridLayout>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

namespace hipico {

namespace {

constexpr int kRefrescoMs = 3000;
constexpr int kTipoDosPantallas = 2;

struct CarreraPantalla {
    long long carrera = 0;
    bool abierta = false;
    QVector<CaballoTablaFija> caballos;
};

QLabel* texto(const QString& t, const char* clase) {
    auto* l = new QLabel(t);
    l->setProperty("pantalla", clase);
    return l;
}

}  // namespace

Form_Pant_TF::Form_Pant_TF(Context& ctx, int carreras, QWidget* parent)
    : Ventana(ctx, parent, carreras > 1 ? QStringLiteral("Form_Pant_TF2") : QStringLiteral("Form_Pant_TF"),
              QStringLiteral("TABLA FIJA")),
      carreras_(carreras) {
    // Light on dark, as a room screen; type sized for the distance.
    const int base = carreras > 1 ? 22 : 34;
    setStyleSheet(QStringLiteral("QWidget#%1 { background: #101820; }"
                                 "QLabel { color: #f5f5f5; font-size: %2px; font-weight: bold; }"
                                 "QLabel[pantalla=\"titulo\"] { color: #ffd200; font-size: %3px; }"
                                 "QLabel[pantalla=\"valor\"] { color: #7cfc00; }"
                                 "QLabel[pantalla=\"retirado\"] { color: #ff5050; }"
                                 "QLabel[pantalla=\"cerrada\"] { color: #ff5050; font-size: %3px; }")
                      .arg(objectName())
                      .arg(base)
                      .arg(base + 12));
    setAttribute(Qt::WA_StyledBackground);
    auto* raiz = new QVBoxLayout(this);
    auto* titulo = texto(QStringLiteral("TABLA FIJA"), "titulo");
    titulo->setAlignment(Qt::AlignCenter);
    raiz->addWidget(titulo);
    rejilla_ = new QGridLayout;
    rejilla_->setHorizontalSpacing(40);
    raiz->addLayout(rejilla_, 1);
    premio_ = texto(QString(), "titulo");
    premio_->setObjectName(QStringLiteral("premio"));
    premio_->setAlignment(Qt::AlignCenter);
    raiz->addWidget(premio_);
    reloj_ = new QTimer(this);
    reloj_->setInterval(kRefrescoMs);
    connect(reloj_, &QTimer::timeout, this, [this] { enSegundoPlano([this] { refrescar(); }); });
    reloj_->start();
    proteger([this] { refrescar(); });
    resize(1280, 720);
}

QWidget* Form_Pant_TF::crear(Context& ctx, QWidget* parent) {
    const int tipo = int(ctx.session.ajuste(QStringLiteral("tipo_pantalla")));
    return new Form_Pant_TF(ctx, tipo == kTipoDosPantallas ? 3 : 1, parent);
}

void Form_Pant_TF::refrescar() {
    Db& db = ctx_.servidor();
    const long long actual = carreraYPista(ctx_).carrera;
    const double premio = Row::toNumber(db.scalar("SELECT valortablafija FROM configuracion"));
    const bool dolares = ctx_.session.enDolares();
    QVector<CarreraPantalla> lista;
    QString firma = QString::number(premio);
    for (long long c = actual; c < actual + carreras_; ++c) {
        CarreraPantalla p{c, !tablaFijaCerrada(db, ctx_.session.grupo, fechaTrabajo(ctx_), c),
                          caballosTablaFija(ctx_, c)};
        if (p.caballos.isEmpty()) continue;
        firma += QStringLiteral("\nCARRERA %1 %2").arg(c).arg(p.abierta ? "ABIERTA" : "CERRADA");
        for (const CaballoTablaFija& h : p.caballos)
            firma += QStringLiteral("\n%1 %2 %3").arg(h.numero).arg(h.nombre).arg(h.retirado ? -1 : h.valor);
        lista << p;
    }
    if (firma == firma_) return;  // nothing changed: no redraw, no flicker
    firma_ = firma;
    while (QLayoutItem* item = rejilla_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (int r = 0; r < rejilla_->rowCount(); ++r) rejilla_->setRowStretch(r, 0);
    int columna = 0, filas = 0;
    for (const CarreraPantalla& p : lista) {
        int fila = 0;
        auto* cabeza = texto(QStringLiteral("CARRERA %1").arg(p.carrera), "titulo");
        rejilla_->addWidget(cabeza, fila++, columna, 1, 3);
        if (!p.abierta) rejilla_->addWidget(texto(QStringLiteral("CERRADA"), "cerrada"), fila++, columna, 1, 3);
        for (const CaballoTablaFija& h : p.caballos) {
            rejilla_->addWidget(texto(QString::number(h.numero), "numero"), fila, columna);
            rejilla_->addWidget(texto(h.nombre, h.retirado ? "retirado" : "nombre"), fila, columna + 1);
            auto* valor = texto(h.retirado ? QStringLiteral("RETIRADO") : formatoMonto(h.valor, dolares),
                                h.retirado ? "retirado" : "valor");
            valor->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
            rejilla_->addWidget(valor, fila++, columna + 2);
        }
        filas = std::max(filas, fila);
        rejilla_->setColumnStretch(columna + 1, 1);
        columna += 3;
    }
    // The rows stay together at the top.
    rejilla_->setRowStretch(filas, 1);
    premio_->setText(QStringLiteral("PREMIO POR TABLA: ") + formatoMonto(premio, dolares));
}

}  // namespace hipico
