#include "subastas/Form_Subasta.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "gui/Estilo.h"
#include "gui/Teclado.h"
#include "reportes/Lanzador.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

namespace hipico {

namespace {

constexpr int kRefrescoMs = 1000;

QLabel* etiqueta(const QString& texto, const QString& nombre, QWidget* padre, const char* clase = nullptr) {
    auto* l = new QLabel(texto, padre);
    l->setObjectName(nombre);
    if (clase) l->setProperty("class", QString::fromLatin1(clase));
    return l;
}

QString nombreCelda(const char* tipo, int a, int b = -1) {
    return b < 0 ? QStringLiteral("%1_%2").arg(QLatin1String(tipo)).arg(a)
                 : QStringLiteral("%1%2_%3").arg(QLatin1String(tipo)).arg(a).arg(b);
}

// A box that takes no typing, and looks so.
void bloquear(QLineEdit* caja, bool bloqueada) {
    caja->setReadOnly(bloqueada);
    marcar(caja, "bloqueada", bloqueada);
}

// The most tables either auction of the board shows.
int tablasMaximas(const DisenoSubasta& d) {
    return static_cast<int>(std::max(d.grande.tablas.size(), d.pequeno.tablas.size()));
}

}  // namespace

Form_Subasta::Form_Subasta(Context& ctx, const DisenoSubasta& diseno, QWidget* parent)
    : Ventana(ctx, parent, diseno.nombre, diseno.titulo), logica_(ctx, diseno) {
    setAttribute(Qt::WA_StyledBackground);
    construir();
    proteger([this] {
        hipodromo_->addItems(logica_.hipodromos());
        const int i = hipodromo_->findText(logica_.hipodromoPorDefecto());
        if (i >= 0) hipodromo_->setCurrentIndex(i);
    });
    connect(hipodromo_, &QComboBox::currentIndexChanged, this, &Form_Subasta::elegirHipodromo);
    elegirHipodromo();
    limpiar();
    enSegundoPlano([this] { logica_.refrescar(); });
    pintar();
}

void Form_Subasta::construir() {
    const DisenoSubasta& d = logica_.diseno();
    hipodromo_ = new QComboBox(this);
    hipodromo_->setObjectName(QStringLiteral("hipodromo"));
    hipodromo_->setMinimumWidth(d.ancho < 800 ? 120 : 170);
    carrera_ = new QComboBox(this);
    carrera_->setObjectName(QStringLiteral("carrera"));
    carrera_->setEditable(true);
    carrera_->setMinimumWidth(60);
    KeyFilter::install(carrera_->lineEdit(), SoloNumeros);
    auto* botonCargar = boton(QStringLiteral("Cargar"), QStringLiteral("cargar"), this);
    estado_ = etiqueta(QString(), QStringLiteral("estado"), this);
    porcentaje_ = etiqueta(QString(), QStringLiteral("porcentaje"), this);

    auto* arriba = new QHBoxLayout;
    arriba->setSpacing(6);
    arriba->addWidget(new QLabel(QStringLiteral("Hipódromo:"), this));
    arriba->addWidget(hipodromo_);
    arriba->addWidget(new QLabel(QStringLiteral("Carrera:"), this));
    arriba->addWidget(carrera_);
    arriba->addWidget(botonCargar);
    if (d.dosSubastas()) {
        tg_ = boton(QStringLiteral("TABLA GRANDE"), QStringLiteral("tg"), this);
        tp_ = boton(QStringLiteral("TABLA PEQUEÑA"), QStringLiteral("tp"), this);
        auto* grupo = new QButtonGroup(this);
        for (QPushButton* b : {tg_, tp_}) {
            b->setCheckable(true);
            grupo->addButton(b);
            arriba->addWidget(b);
        }
        tg_->setChecked(true);
        connect(tg_, &QPushButton::clicked, this, [this] { mostrarLado(false); });
        connect(tp_, &QPushButton::clicked, this, [this] { mostrarLado(true); });
    }
    arriba->addStretch();

    auto* todo = new QVBoxLayout(this);
    todo->setContentsMargins(6, 6, 6, 6);
    todo->setSpacing(4);
    todo->addLayout(arriba);
    auto* desplazable = new QScrollArea(this);
    desplazable->setObjectName(QStringLiteral("tablero"));
    desplazable->setWidgetResizable(true);
    desplazable->setFrameShape(QFrame::NoFrame);
    desplazable->setWidget(construirTablero());
    todo->addWidget(desplazable, 1);
    todo->addWidget(construirComandos());
    resize(d.ancho, d.alto);

    connect(botonCargar, &QPushButton::clicked, this, &Form_Subasta::cargar);
    enterVaA(hipodromo_, carrera_);
    enterEjecuta(carrera_, [this] { cargar(); });
    enterPulsa(botonCargar);
    primerFoco(carrera_);

    reloj_ = new QTimer(this);
    reloj_->setInterval(kRefrescoMs);
    connect(reloj_, &QTimer::timeout, this, &Form_Subasta::refrescar);
}

QWidget* Form_Subasta::construirTablero() {
    const DisenoSubasta& d = logica_.diseno();
    const int tablas = tablasMaximas(d);
    // Narrow boxes where the screen is narrow or the tables many.
    const bool compacto = d.ancho < 800 || tablas >= 4;
    auto* w = new QWidget;
    w->setObjectName(QStringLiteral("lineas"));
    auto* g = new QGridLayout(w);
    g->setHorizontalSpacing(compacto ? 2 : 4);
    g->setVerticalSpacing(compacto ? 1 : 2);
    g->setContentsMargins(0, 0, 0, 0);
    const int colCasa = 3 + 2 * tablas;
    const int colEstado = colCasa + 1;

    g->addWidget(etiqueta(QStringLiteral("Nº"), QStringLiteral("cabNumero"), w, "cabecera"), 0, 0);
    g->addWidget(etiqueta(QStringLiteral("CABALLO"), QStringLiteral("cabCaballo"), w, "cabecera"), 0, 1);
    g->addWidget(etiqueta(QStringLiteral("RET"), QStringLiteral("cabRetirado"), w, "cabecera"), 0, 2);
    for (int k = 0; k < tablas; ++k)
        for (int c = 0; c < 2; ++c) {
            QLabel* cab = etiqueta(QString(), nombreCelda(c == 0 ? "cabMesa" : "cabTabla", k), w, "cabecera");
            cab->setAlignment(Qt::AlignCenter);
            g->addWidget(cab, 0, 3 + 2 * k + c);
            encabezados_ << cab;
        }
    cabCasa_ = etiqueta(QStringLiteral("CASA"), QStringLiteral("cabCasa"), w, "cabecera");
    QLabel* cabCasa = cabCasa_;
    g->addWidget(cabCasa, 0, colCasa);
    g->addWidget(etiqueta(QStringLiteral("ESTADO"), QStringLiteral("cabEstado"), w, "cabecera"), 0, colEstado);

    QVector<QWidget*> orden;
    for (int i = 0; i < kLineasTablero; ++i) {
        Celdas c;
        c.numero = boton(QString::number(i + 1), nombreCelda("linea", i), w);
        c.numero->setFocusPolicy(Qt::NoFocus);
        c.numero->setToolTip(QStringLiteral("Invalidar la venta del caballo (otro clic la restablece)"));
        c.numero->setFixedWidth(compacto ? 30 : 36);
        c.caballo = etiqueta(QString(), nombreCelda("caballo", i), w, "caballo");
        c.caballo->setMinimumWidth(compacto ? 104 : 140);
        c.retirado = new QCheckBox(w);
        c.retirado->setObjectName(nombreCelda("retirado", i));
        c.retirado->setFocusPolicy(Qt::NoFocus);
        g->addWidget(c.numero, i + 1, 0);
        g->addWidget(c.caballo, i + 1, 1);
        g->addWidget(c.retirado, i + 1, 2, Qt::AlignCenter);
        for (int k = 0; k < tablas; ++k) {
            QLineEdit* m = caja(nombreCelda("mesa", k, i), w, 15, SoloAlfanumerico, compacto ? 50 : 64);
            m->setProperty("class", QStringLiteral("mesa"));
            QLineEdit* t = caja(nombreCelda("tabla", k, i), w, 12, SoloNumerosComa, compacto ? 76 : 92);
            t->setProperty("class", QStringLiteral("monto"));
            t->setAlignment(Qt::AlignRight);
            g->addWidget(m, i + 1, 3 + 2 * k);
            g->addWidget(t, i + 1, 4 + 2 * k);
            c.mesas << m;
            c.montos << t;
            orden << m << t;
            EnterMovesOn::install(m);
            EnterMovesOn::install(t);
            connect(m, &QLineEdit::textEdited, this, [m](const QString& texto) {
                const QString casa = compradorTecleado(texto);
                if (casa == texto) return;
                m->setText(casa);
                m->setModified(true);
            });
            connect(m, &QLineEdit::editingFinished, this, [this, m, i, k] {
                dejarCaja(m, [this, i, k](const QString& s) {
                    return logica_.escribirComprador(i, logica_.lado().tablas.value(k), s);
                });
            });
            connect(t, &QLineEdit::editingFinished, this, [this, t, i, k] {
                dejarCaja(t, [this, i, k](const QString& s) {
                    return logica_.escribirMonto(i, logica_.lado().tablas.value(k), s);
                });
            });
            escritura_ << m << t;
        }
        c.casa = caja(nombreCelda("casa", i), w, 12, SoloNumerosComa, compacto ? 64 : 84);
        c.casa->setProperty("class", QStringLiteral("monto"));
        c.casa->setAlignment(Qt::AlignRight);
        EnterMovesOn::install(c.casa);
        orden << c.casa;
        QLineEdit* casa = c.casa;
        connect(casa, &QLineEdit::editingFinished, this, [this, casa, i] {
            dejarCaja(casa, [this, i](const QString& s) { return logica_.escribirTablaCasa(i, s); });
        });
        g->addWidget(c.casa, i + 1, colCasa);
        c.estado = etiqueta(QString(), nombreCelda("estadoLinea", i), w, "estadoLinea");
        c.estado->setMinimumWidth(compacto ? 70 : 90);
        g->addWidget(c.estado, i + 1, colEstado);
        connect(c.numero, &QPushButton::clicked, this, [this, i] { comando([this, i] { return logica_.invalidar(i); }); });
        QCheckBox* ret = c.retirado;
        connect(ret, &QCheckBox::clicked, this,
                [this, ret, i] { comando([this, ret, i] { return logica_.retirar(i, ret->isChecked()); }); });
        escritura_ << c.numero << c.retirado << c.casa;
        lineas_ << c;
    }
    for (int i = 1; i < orden.size(); ++i) QWidget::setTabOrder(orden[i - 1], orden[i]);

    // Under each table: its total, commission and prize.
    const int fila = kLineasTablero + 1;
    g->addWidget(etiqueta(QStringLiteral("TOTAL"), QStringLiteral("rotTotal"), w, "rotulo"), fila, 1);
    g->addWidget(etiqueta(QStringLiteral("COMISION"), QStringLiteral("rotComision"), w, "rotulo"), fila + 1, 1);
    if (!d.aGanarPorTabla)
        g->addWidget(etiqueta(QStringLiteral("A GANAR"), QStringLiteral("rotPremio"), w, "rotulo"), fila + 2, 1);
    // A board with a prize per table names each one on a line of its own: "(1) a ganar :".
    const int filaPremio = d.aGanarPorTabla ? fila + 3 : fila + 2;
    for (int k = 0; k < tablas; ++k) {
        Totales t{etiqueta(QString(), nombreCelda("total", k), w, "cifra"),
                  etiqueta(QString(), nombreCelda("comision", k), w, "cifra"),
                  etiqueta(QString(), nombreCelda("premio", k), w, "cifra"),
                  etiqueta(QString(), nombreCelda("aGanar", k), w, "rotulo")};
        for (QLabel* l : {t.total, t.comision, t.premio, t.aGanar}) l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        g->addWidget(t.total, fila, 3 + 2 * k, 1, 2);
        g->addWidget(t.comision, fila + 1, 3 + 2 * k, 1, 2);
        if (d.aGanarPorTabla) g->addWidget(t.aGanar, fila + 2, 3 + 2 * k, 1, 2);
        g->addWidget(t.premio, filaPremio, 3 + 2 * k, 1, 2);
        totales_ << t;
    }
    g->setColumnStretch(colEstado + 1, 1);
    g->setRowStretch(filaPremio + 1, 1);
    return w;
}

QWidget* Form_Subasta::construirComandos() {
    const DisenoSubasta& d = logica_.diseno();
    auto* w = new QWidget(this);
    w->setObjectName(QStringLiteral("comandos"));
    auto* g = new QGridLayout(w);
    g->setContentsMargins(0, 0, 0, 0);
    g->setHorizontalSpacing(6);
    g->setVerticalSpacing(3);

    pote_ = caja(QStringLiteral("pote"), w, 12, SoloNumerosComa, 110);
    pote_->setProperty("class", QStringLiteral("monto"));
    pote_->setAlignment(Qt::AlignRight);
    EnterMovesOn::install(pote_);
    connect(pote_, &QLineEdit::editingFinished, this,
            [this] { dejarCaja(pote_, [this](const QString& s) { return logica_.escribirPote(s); }); });
    casaJugado_ = etiqueta(QString(), QStringLiteral("casaJugado"), w, "cifra");
    casaGanado_ = etiqueta(QString(), QStringLiteral("casaGanado"), w, "cifra");
    auto* cifras = new QHBoxLayout;
    cifras->addWidget(etiqueta(QStringLiteral("Pote:"), QStringLiteral("rotPote"), w, "rotulo"));
    cifras->addWidget(pote_);
    cifras->addSpacing(10);
    cifras->addWidget(etiqueta(QStringLiteral("Casa Jugado:"), QStringLiteral("rotCasaJugado"), w, "rotulo"));
    cifras->addWidget(casaJugado_);
    cifras->addSpacing(10);
    cifras->addWidget(etiqueta(QStringLiteral("Casa Ganado:"), QStringLiteral("rotCasaGanado"), w, "rotulo"));
    cifras->addWidget(casaGanado_);
    cifras->addStretch();
    cifras->addWidget(porcentaje_);
    cifras->addSpacing(10);
    cifras->addWidget(estado_);
    g->addLayout(cifras, 0, 0);

    // Two rows of buttons: the pot's commands and the reports, then the printed pieces.
    auto* comandos = new QHBoxLayout;
    auto* impresos = new QHBoxLayout;
    auto* botones = new QVBoxLayout;
    for (QHBoxLayout* fila : {comandos, impresos}) {
        fila->setSpacing(4);
        botones->addLayout(fila);
    }
    const auto agregar = [&](QHBoxLayout* fila, const QString& texto, const QString& nombre, std::function<bool()> fn,
                             bool escribe) {
        QPushButton* b = boton(texto, nombre, w);
        fila->addWidget(b);
        connect(b, &QPushButton::clicked, this, [this, fn] { comando(fn); });
        enterPulsa(b);
        (escribe ? escritura_ : conCarrera_) << b;
    };
    agregar(comandos, QStringLiteral("REDONDEAR REMATE"), QStringLiteral("redondear"),
            [this] { return logica_.RedondearRemate(); }, true);
    if (d.ajuste == AjustePote::PagoMinimo)
        agregar(comandos, QStringLiteral("PAGO MINIMO"), QStringLiteral("pagoMinimo"),
                [this] { return logica_.AplicarPagoMinimo(); }, false);
    if (d.ajuste == AjustePote::Doblaje)
        agregar(comandos, QStringLiteral("DOBLAJE DE LA SUBASTA"), QStringLiteral("doblaje"),
                [this] { return logica_.AplicarDoblaje(); }, false);
    if (d.cambioPorcentaje)
        agregar(comandos, QStringLiteral("PORCENTAJE"), QStringLiteral("cambiarPorcentaje"),
                [this] { return logica_.CambiarPorcentaje(); }, false);
    for (const bool final : {false, true})
        agregar(comandos, final ? QStringLiteral("REPORTE FINAL") : QStringLiteral("REPORTE CARRERA"),
                final ? QStringLiteral("reporteFinal") : QStringLiteral("reporteCarrera"),
                [this, final] {
                    const int tipo = logica_.LlenarReporte(final);
                    return tipo != 0 && abrirReporte(ctx_, tipo, {}, this) != nullptr;
                },
                false);
    int n = 0;
    for (ImpresoSubasta cual : d.impresos)
        agregar(impresos, Subasta::tituloImpreso(d, cual).trimmed(), QStringLiteral("imprimir_%1").arg(n++),
                [this, cual] { return logica_.Impresora(cual); }, false);
    comandos->addStretch();
    impresos->addStretch();
    g->addLayout(botones, 1, 0);

    mensaje_ = etiqueta(QString(), QStringLiteral("mensaje"), w);
    mensaje_->setWordWrap(true);
    textoMensaje_ = caja(QStringLiteral("textoMensaje"), w, 255);
    textoMensaje_->setPlaceholderText(QStringLiteral("Mensaje para las taquillas del grupo"));
    enviar_ = boton(QStringLiteral("Enviar"), QStringLiteral("enviarMensaje"), w);
    QPushButton* enviar = enviar_;
    connect(enviar, &QPushButton::clicked, this, [this] {
        comando([this] {
            if (!logica_.enviarMensaje(textoMensaje_->text())) return false;
            textoMensaje_->clear();
            return true;
        });
    });
    enterEjecuta(textoMensaje_, [enviar] { enviar->click(); });
    auto* linea = new QHBoxLayout;
    linea->addWidget(etiqueta(QStringLiteral("Mensaje:"), QStringLiteral("rotMensaje"), w, "rotulo"));
    linea->addWidget(mensaje_, 1);
    linea->addWidget(textoMensaje_, 1);
    linea->addWidget(enviar);
    g->addLayout(linea, 2, 0);
    escritura_ << pote_;
    return w;
}

void Form_Subasta::showEvent(QShowEvent* event) {
    Ventana::showEvent(event);
    reloj_->start();
}

void Form_Subasta::hideEvent(QHideEvent* event) {
    reloj_->stop();
    Ventana::hideEvent(event);
}

void Form_Subasta::elegirHipodromo() {
    const QString actual = carrera_->currentText();
    carrera_->clear();
    proteger([this] { carrera_->addItems(logica_.carreras(hipodromo_->currentText())); });
    if (!actual.isEmpty()) carrera_->setEditText(actual);
}

void Form_Subasta::cargar() {
    const auto numero = leerEntero(carrera_->currentText(), 99);
    if (!numero || *numero == 0) {
        ctx_.dialogs.refuse(kTituloSubasta, QStringLiteral("EL NUMERO DE CARRERA NO ES VALIDO"));
        return;
    }
    const bool tablita = tp_ && tp_->isChecked();
    proteger([&] {
        if (tablita) logica_.CargarCarreraTablita(hipodromo_->currentText(), *numero);
        else logica_.CargarCarrera(hipodromo_->currentText(), *numero);
    });
    if (!logica_.cargada()) limpiar();
    pintar();
    if (!lineas_.isEmpty() && logica_.cargada() && !logica_.soloLectura()) lineas_[0].mesas.value(0)->setFocus();
}

void Form_Subasta::mostrarLado(bool tablita) {
    logica_.MostrarCarrera(tablita);
    pintar();
}

void Form_Subasta::refrescar() {
    bool cambio = false;
    enSegundoPlano([&] { cambio = logica_.refrescar(); });
    if (cambio) pintar();
}

void Form_Subasta::comando(const std::function<bool()>& fn) {
    proteger(fn);
    pintar();
}

void Form_Subasta::dejarCaja(QLineEdit* caja, const std::function<bool(const QString&)>& escribir) {
    if (!caja->isModified()) return;
    caja->setModified(false);
    proteger([&] { return escribir(caja->text()); });
    pintar();
}

void Form_Subasta::encabezarTablas() {
    const LadoSubasta& lado = logica_.lado();
    for (int i = 0; i < encabezados_.size(); ++i) {
        const int k = i / 2;
        const bool hay = k < lado.tablas.size();
        encabezados_[i]->setVisible(hay);
        if (hay) encabezados_[i]->setText((i % 2 == 0 ? QStringLiteral("MESA %1") : QStringLiteral("TABLA %1")).arg(lado.tablas[k]));
    }
}

void Form_Subasta::limpiar() {
    for (Celdas& c : lineas_) {
        c.numero->setText(QString());
        c.caballo->clear();
        c.estado->clear();
        c.retirado->setChecked(false);
        for (QLineEdit* e : c.mesas + c.montos) e->clear();
        c.casa->clear();
    }
    pote_->clear();
}

void Form_Subasta::pintar() {
    const DisenoSubasta& d = logica_.diseno();
    const LadoSubasta& lado = logica_.lado();
    encabezarTablas();
    const bool cargada = logica_.cargada();
    const bool soloLectura = logica_.soloLectura();
    estado_->setText(!cargada ? QString()
                     : logica_.estado() == Subasta::Estado::Cerrada ? subasta::Cerrado
                                                                      : QStringLiteral("ABIERTA"));
    estado_->setVisible(cargada);
    marcar(estado_, "cerrado", cargada && logica_.estado() == Subasta::Estado::Cerrada);
    porcentaje_->setText(cargada ? QStringLiteral("Porcentaje: %1 %").arg(logica_.porcentaje()) : QString());
    mensaje_->setText(logica_.mensaje());

    const QWidget* foco = QApplication::focusWidget();
    const auto poner = [foco](QLineEdit* e, const QString& texto) {
        // What is being typed stays until the box is left.
        if (e == foco && e->isModified()) return;
        if (e->text() != texto) e->setText(texto);
    };
    const auto monto = [](double v) { return v == 0 ? QString() : QString::number(v, 'f', 2).replace('.', ','); };
    const QVector<Subasta::Linea> lineas = logica_.lineas();
    const bool conCasa = !lado.tablaCasa.isEmpty();
    cabCasa_->setVisible(conCasa);
    for (int i = 0; i < lineas_.size(); ++i) {
        Celdas& c = lineas_[i];
        const bool hay = i < lineas.size();
        for (QWidget* w : std::initializer_list<QWidget*>{c.numero, c.caballo, c.retirado, c.estado}) w->setVisible(hay);
        c.casa->setVisible(hay && conCasa);
        for (int k = 0; k < c.mesas.size(); ++k) {
            const bool tabla = hay && k < lado.tablas.size();
            c.mesas[k]->setVisible(tabla);
            c.montos[k]->setVisible(tabla);
            if (!tabla) continue;
            poner(c.mesas[k], lineas[i].mesas[k]);
            poner(c.montos[k], monto(lineas[i].montos[k]));
            for (QLineEdit* e : {c.mesas[k], c.montos[k]}) bloquear(e, soloLectura);
        }
        if (!hay) continue;
        const Subasta::Linea& l = lineas[i];
        c.numero->setText(QString::number(l.numero));
        c.caballo->setText(l.caballo);
        c.caballo->setToolTip(l.caballo);
        c.retirado->setChecked(l.retirado);
        c.estado->setText(l.estado);
        marcar(c.caballo, "retirado", l.retirado);
        marcar(c.estado, "invalidado", l.invalidada || l.estado == subasta::Invalidado);
        if (conCasa) poner(c.casa, monto(l.tablaCasa));
        bloquear(c.casa, soloLectura);
    }
    for (QWidget* w : escritura_)
        if (!qobject_cast<QLineEdit*>(w)) w->setEnabled(cargada && !soloLectura);
    for (QWidget* w : conCarrera_) w->setEnabled(cargada && !logica_.esSocio());
    bloquear(pote_, soloLectura);
    bloquear(textoMensaje_, logica_.esSocio());
    enviar_->setEnabled(!logica_.esSocio());

    const TotalesSubasta t = cargada ? logica_.Calcular() : TotalesSubasta();
    for (int k = 0; k < totales_.size(); ++k) {
        const bool hay = cargada && k < t.tablas.size();
        Totales& tt = totales_[k];
        tt.total->setText(hay ? formatoDolar(t.tablas[k].total) : QString());
        tt.comision->setText(hay ? formatoDolar(t.tablas[k].comision) : QString());
        tt.premio->setText(hay ? formatoDolar(t.tablas[k].premio) : QString());
        tt.aGanar->setText(hay && d.aGanarPorTabla ? QStringLiteral("(%1) a ganar :").arg(t.tablas[k].tabla) : QString());
    }
    poner(pote_, cargada ? monto(t.pote) : QString());
    casaJugado_->setText(cargada ? formatoDolar(t.casaJugado) : QString());
    casaGanado_->setText(cargada ? formatoDolar(t.casaGanado) : QString());
}

}  // namespace hipico
