#include "admin/Form_Admin_MC.h"

#include "admin/CombinacionesMacuare.h"
#include "core/Context.h"
#include "core/Formato.h"
#include "core/Textos.h"
#include "gui/Campos.h"
#include "gui/Grilla.h"
#include "gui/Teclado.h"
#include "reportes/Lanzador.h"
#include "sales/TicketKeys.h"

#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace hipico {

namespace {

const QString kTituloMC = QStringLiteral("ADMINISTRACION DE MACUARE");

QString fechaDe(const QDateEdit* d) { return fechaSql(d->date()); }

QDateEdit* fechaTrabajoEn(Context& ctx, const QString& nombre) {
    QDateEdit* f = selectorFecha(nombre);
    const QDate hoy = desdeFechaSql(ctx.session.fecha);
    f->setDate(hoy.isValid() ? hoy : ctx.clock.today());
    return f;
}

QTableWidget* tabla(const QString& nombre, const QStringList& cabeceras) {
    auto* t = new QTableWidget(0, cabeceras.size());
    prepararGrilla(t, nombre, AnchoColumnas::Repartido);
    t->setHorizontalHeaderLabels(cabeceras);
    return t;
}

void llenar(QTableWidget* t, const QVector<QStringList>& filas) {
    t->setRowCount(filas.size());
    for (int f = 0; f < filas.size(); ++f)
        for (int c = 0; c < filas[f].size(); ++c) t->setItem(f, c, new QTableWidgetItem(filas[f][c]));
}

QString dinero(Context& ctx, double monto) { return formatoMonto(monto, ctx.session.enDolares()); }

// The alive tickets by group as rows, and their totals.
QVector<QStringList> filasVivos(Context& ctx, const QVector<VivosGrupo>& v, QString* total) {
    QVector<QStringList> filas;
    long long boletos = 0, combinaciones = 0;
    double monto = 0;
    for (const VivosGrupo& g : v) {
        filas << QStringList{g.grupo, QString::number(g.boletos), QString::number(g.combinaciones), dinero(ctx, g.monto)};
        boletos += g.boletos;
        combinaciones += g.combinaciones;
        monto += g.monto;
    }
    *total = QStringLiteral("VIVOS: %1 BOLETOS, %2 COMBINACIONES, %3")
                 .arg(boletos)
                 .arg(combinaciones)
                 .arg(dinero(ctx, monto));
    return filas;
}

}  // namespace

QVector<long long> leerGanadores(const QString& texto, bool* valido) {
    QVector<long long> v;
    *valido = true;
    for (const QString& parte : texto.split(QLatin1Char('-'), Qt::SkipEmptyParts)) {
        const std::optional<long long> n = leerEntero(parte.trimmed(), 99);
        if (!n || *n < 1) *valido = false;
        v << n.value_or(0);
    }
    return v;
}

QString textoGanadores(const QVector<long long>& caballos) {
    QStringList t;
    for (long long n : caballos) t << QString::number(n);
    return t.join(QLatin1Char('-'));
}

// ---------------------------------------------------------------- form_Admin_MC

Form_Admin_MC::Form_Admin_MC(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("form_Admin_MC"), kTituloMC, Centrado::SegunAjuste), proceso_(ctx) {
    fecha_ = fechaTrabajoEn(ctx, QStringLiteral("DTPicker1"));
    hipodromo_ = caja(QStringLiteral("Text_hipodromo"), nullptr, 4, SoloNumeros, 60);
    carrera1_ = caja(QStringLiteral("Text_carrera1"), nullptr, 3, SoloNumeros, 60);
    casa_ = caja(QStringLiteral("Text_casa"), nullptr, 6, SoloNumerosComa, 80);
    estado_ = new QLabel;
    estado_->setObjectName(QStringLiteral("estado"));
    auto* guardar = boton(QStringLiteral("Guardar"), QStringLiteral("Boton_Guardar"));
    auto* abrir = boton(QStringLiteral("Abrir Macuare"), QStringLiteral("Boton_Abrir"));
    auto* cerrar = boton(QStringLiteral("Cerrar Macuare"), QStringLiteral("Boton_Cerrar"));
    auto* dia = new QGroupBox(QStringLiteral("MACUARE DEL DIA"));
    auto* d = new QHBoxLayout(dia);
    for (QWidget* w : std::initializer_list<QWidget*>{new QLabel(QStringLiteral("Fecha")), fecha_,
                                                      new QLabel(QStringLiteral("Hipódromo")), hipodromo_,
                                                      new QLabel(QStringLiteral("Primera carrera")), carrera1_,
                                                      new QLabel(QStringLiteral("% Casa")), casa_, guardar, abrir,
                                                      cerrar, estado_})
        d->addWidget(w);
    d->addStretch(1);

    auto* legs = new QGroupBox(QStringLiteral("GANADORES (EMPATE: 4-7)"));
    auto* g = new QGridLayout(legs);
    for (int i = 0; i < kPiernas; ++i) {
        auto* c = new QLabel;
        c->setObjectName(QStringLiteral("carrera%1").arg(i + 1));
        carreras_ << c;
        auto* e = caja(QStringLiteral("Text_ganador%1").arg(i + 1), nullptr, 8, SoloNumerosComaGuion, 90);
        ganadores_ << e;
        g->addWidget(c, 0, i);
        g->addWidget(e, 1, i);
        if (i > 0) enterVaA(ganadores_[i - 1], e);
    }
    auto* procesar = boton(QStringLiteral("PROCESAR"), QStringLiteral("Boton_Procesar"));
    auto* express = boton(QStringLiteral("Resultados Express"), QStringLiteral("Boton_Express"));
    g->addWidget(procesar, 1, kPiernas);
    g->addWidget(express, 0, kPiernas);
    enterPulsa(procesar);
    enterVaA(ganadores_.last(), procesar);
    liquidacion_ = new QLabel;
    liquidacion_->setObjectName(QStringLiteral("liquidacion"));
    g->addWidget(liquidacion_, 2, 0, 1, kPiernas + 1);

    auto* tickets = new QGroupBox(QStringLiteral("BOLETOS"));
    auto* t = new QGridLayout(tickets);
    grupo_ = new QComboBox;
    grupo_->setObjectName(QStringLiteral("Combo_Grupo"));
    grupo_->addItem(texto::Todos);
    clase_ = new QComboBox;
    clase_->setObjectName(QStringLiteral("Combo_Estatus"));
    clase_->addItems(ProcesoMacuare::clasesBusqueda());
    codigo_ = caja(QStringLiteral("Text_codigo"), nullptr, 25, SoloNumeros, 160);
    auto* buscar = boton(QStringLiteral("Buscar"), QStringLiteral("Boton_Buscar"));
    auto* anular = boton(QStringLiteral("Anular Macuare"), QStringLiteral("Boton_Anular"));
    auto* pagar = boton(QStringLiteral("Pagar Boleto"), QStringLiteral("Boton_Pagar"));
    auto* combinaciones = boton(QStringLiteral("Combinaciones"), QStringLiteral("Boton_Combinaciones"));
    auto* diario = boton(QStringLiteral("Resumen Diario"), QStringLiteral("Boton_Diario"));
    auto* fila = new QHBoxLayout;
    for (QWidget* w : std::initializer_list<QWidget*>{new QLabel(QStringLiteral("Grupo")), grupo_, clase_, buscar,
                                                      new QLabel(QStringLiteral("Boleto")), codigo_, pagar, anular,
                                                      combinaciones, diario})
        fila->addWidget(w);
    fila->addStretch(1);
    boletos_ = tabla(QStringLiteral("Grilla_Boletos"),
                     {" BOLETO ", " HORA ", " COMBINACION ", " MONTO ", " VECES ", " COBRADO ", " ESTATUS ", " TAQ ",
                      " GRUPO ", " NOMBRE "});
    t->addLayout(fila, 0, 0);
    t->addWidget(boletos_, 1, 0);

    auto* raiz = new QVBoxLayout(this);
    raiz->addWidget(dia);
    raiz->addWidget(legs);
    raiz->addWidget(tickets, 1);
    primerFoco(ganadores_.first());

    connect(guardar, &QPushButton::clicked, this, [this] { Guardar_Click(); });
    connect(abrir, &QPushButton::clicked, this, [this] { Abrir_Click(true); });
    connect(cerrar, &QPushButton::clicked, this, [this] { Abrir_Click(false); });
    connect(procesar, &QPushButton::clicked, this, [this] { Procesar_Click(); });
    connect(express, &QPushButton::clicked, this, [this] { Express_Click(); });
    connect(buscar, &QPushButton::clicked, this, [this] { Buscar_Click(); });
    connect(anular, &QPushButton::clicked, this, [this] {
        proceso_.anularBoleto();
        Buscar_Click();
    });
    connect(pagar, &QPushButton::clicked, this, [this] {
        proceso_.pagarBoleto(codigo_->text());
        Buscar_Click();
    });
    connect(combinaciones, &QPushButton::clicked, this, [this] {
        auto* w = new Form_combinaciones(ctx_, this);
        w->setAttribute(Qt::WA_DeleteOnClose);
        w->show();
    });
    connect(diario, &QPushButton::clicked, this, [this] { Diario_Click(); });
    connect(fecha_, &QDateEdit::dateChanged, this, [this] { cargar(); });
    proteger([this] {
        for (const Row& r : ctx_.servidor().query("SELECT grupo FROM grupos ORDER BY grupo"))
            grupo_->addItem(r.text("grupo"));
    });
    cargar();
}

QString Form_Admin_MC::fecha() const { return fechaDe(fecha_); }

void Form_Admin_MC::cargar() {
    proteger([this] {
        const DiaMacuare d = proceso_.dia(fecha());
        hipodromo_->setText(QString::number(d.hipodromo));
        carrera1_->setText(QString::number(d.carrera1));
        casa_->setText(textoNumero(d.porcentajeCasa).replace(QLatin1Char('.'), QLatin1Char(',')));
        for (int i = 0; i < kPiernas; ++i) carreras_[i]->setText(QStringLiteral("CARRERA %1").arg(d.carrera(i)));
        const GanadoresDia g = proceso_.ganadores(fecha());
        for (int i = 0; i < kPiernas; ++i) ganadores_[i]->setText(textoGanadores(g[i]));
        estado_->setText(macuareAbierto(ctx_.servidor(), fecha()) ? QStringLiteral("ABIERTO")
                                                                   : QStringLiteral("CERRADO"));
    });
    mostrarLiquidacion();
    Buscar_Click();
}

void Form_Admin_MC::mostrarLiquidacion() {
    const auto l = intentar([this] { return proceso_.liquidacion(fecha()); });
    if (!l || !*l) {
        liquidacion_->setText(QStringLiteral("SIN PROCESAR"));
        return;
    }
    const Liquidacion& q = **l;
    liquidacion_->setText(
        QStringLiteral("VENTA: %1   CASA: %2   ARRASTRE: %3   POZO: %4   BOLETOS GANADORES: %5   PASA AL DIA SIGUIENTE: %6")
            .arg(dinero(ctx_, q.venta), dinero(ctx_, q.casa), dinero(ctx_, q.arrastre), dinero(ctx_, q.pozo))
            .arg(q.ganadores)
            .arg(dinero(ctx_, q.arrastreSiguiente)));
}

void Form_Admin_MC::Guardar_Click() {
    double casa = -1;
    if (!leerMonto(casa_->text().trimmed(), casa)) casa = -1;
    proceso_.configurar(fecha(), leerEntero(hipodromo_->text()).value_or(-1), leerEntero(carrera1_->text()).value_or(0),
                        casa);
    cargar();
}

void Form_Admin_MC::Abrir_Click(bool abierto) {
    proceso_.abrir(fecha(), abierto);
    cargar();
}

void Form_Admin_MC::Procesar_Click() {
    // Every leg as typed; a leg whose text is not valid stops before anything is written.
    GanadoresDia g;
    for (int i = 0; i < kPiernas; ++i) {
        bool valido = true;
        g[i] = leerGanadores(ganadores_[i]->text(), &valido);
        if (!valido) {
            ctx_.dialogs.refuse(texto::TituloValidacionDatos, texto::ColocarCaballoValido);
            ganadores_[i]->setFocus();
            return;
        }
    }
    const auto previa = intentar([this] { return proceso_.liquidacion(fecha()); });
    if (previa && *previa &&
        !ctx_.dialogs.confirm(texto::TituloVerifiqueProceso,
                              QStringLiteral("Este macuare ya fue procesado, ¿Desea hacerlo de nuevo?")))
        return;
    const GanadoresDia antes = intentar([this] { return proceso_.ganadores(fecha()); }).value_or(GanadoresDia{});
    std::optional<Liquidacion> l;
    for (int i = 0; i < kPiernas; ++i) {
        if (g[i] == antes[i] && i + 1 < kPiernas) continue;
        l = proceso_.fijarGanadores(fecha(), i, g[i]);
        if (!l) {
            ganadores_[i]->setFocus();
            cargar();
            return;
        }
    }
    cargar();
    if (l && l->hecha) ctx_.dialogs.inform(kTituloMC, QStringLiteral("MACUARE PROCESADO CON EXITO"));
}

void Form_Admin_MC::Buscar_Click() {
    const auto rs = intentar([this] { return proceso_.buscarBoletos(fecha(), grupo_->currentText(), clase_->currentText()); });
    if (!rs) return;
    QVector<QStringList> filas;
    for (const Row& r : *rs)
        filas << QStringList{r.text("boleto"),  r.text("hora"),    r.text("combinacion"), dinero(ctx_, r.number("monto")),
                             r.text("veces"),   dinero(ctx_, r.number("cobrado")),      r.text("estatus"),
                             r.text("taquilla"), r.text("grupo"),  r.text("nombre")};
    llenar(boletos_, filas);
}

bool Form_Admin_MC::Diario_Click() {
    const auto n = intentar([this] { return llenarRptDiarioMC(ctx_, fecha()); });
    if (!n) return false;
    if (*n == 0) {
        ctx_.dialogs.refuse(texto::TituloBusqueda, texto::SinRegistros);
        return false;
    }
    return abrirReporte(ctx_, 14, {}, this) != nullptr;
}

QWidget* Form_Admin_MC::Express_Click() {
    auto* w = new Form_Admin_Express(ctx_, fecha(), this);
    w->setAttribute(Qt::WA_DeleteOnClose);
    // Back here, the winners entered there are shown.
    connect(w, &Form_Admin_Express::cerrada, this, [this] { cargar(); });
    w->show();
    return w;
}

// ---------------------------------------------------------------- Form_Admin_Express

Form_Admin_Express::Form_Admin_Express(Context& ctx, const QString& fecha, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_Admin_Express"), QStringLiteral("RESULTADOS EXPRESS - MACUARE"),
              Centrado::SegunAjuste),
      proceso_(ctx), fecha_(fecha) {
    setWindowFlag(Qt::Window);
    pierna_ = new QComboBox;
    pierna_->setObjectName(QStringLiteral("Combo_Pierna"));
    caballos_ = caja(QStringLiteral("Text_ganador"), nullptr, 8, SoloNumerosComaGuion, 100);
    auto* fijar = boton(QStringLiteral("Fijar"), QStringLiteral("Boton_Fijar"));
    piernas_ = new QLabel;
    piernas_->setObjectName(QStringLiteral("piernas"));
    total_ = new QLabel;
    total_->setObjectName(QStringLiteral("total"));
    vivos_ = tabla(QStringLiteral("Grilla_Vivos"), {" GRUPO ", " BOLETOS ", " COMBINACIONES ", " MONTO "});
    auto* fila = new QHBoxLayout;
    fila->addWidget(new QLabel(QStringLiteral("Carrera")));
    fila->addWidget(pierna_);
    fila->addWidget(new QLabel(QStringLiteral("Ganador")));
    fila->addWidget(caballos_);
    fila->addWidget(fijar);
    fila->addStretch(1);
    auto* raiz = new QVBoxLayout(this);
    raiz->addWidget(new QLabel(QStringLiteral("MACUARE DEL ") + fechaVista(fecha)));
    raiz->addLayout(fila);
    raiz->addWidget(piernas_);
    raiz->addWidget(vivos_, 1);
    raiz->addWidget(total_);
    primerFoco(caballos_);
    enterEjecuta(caballos_, [this] { Fijar_Click(); });
    connect(fijar, &QPushButton::clicked, this, [this] { Fijar_Click(); });
    proteger([this] {
        const DiaMacuare d = proceso_.dia(fecha_);
        for (int i = 0; i < kPiernas; ++i) pierna_->addItem(QStringLiteral("%1 (VALIDA %2)").arg(d.carrera(i)).arg(i + 1));
        // The first leg still without a winner.
        const GanadoresDia g = proceso_.ganadores(fecha_);
        int primera = 0;
        while (primera < kPiernas - 1 && !g[primera].isEmpty()) ++primera;
        pierna_->setCurrentIndex(primera);
    });
    mostrar();
}

void Form_Admin_Express::closeEvent(QCloseEvent* event) {
    Ventana::closeEvent(event);
    emit cerrada();
}

void Form_Admin_Express::Fijar_Click() {
    bool valido = true;
    const QVector<long long> caballos = leerGanadores(caballos_->text(), &valido);
    if (!valido) {
        ctx_.dialogs.refuse(texto::TituloValidacionDatos, texto::ColocarCaballoValido);
        return;
    }
    const auto l = proceso_.fijarGanadores(fecha_, pierna_->currentIndex(), caballos);
    if (!l) return;
    caballos_->clear();
    if (pierna_->currentIndex() + 1 < kPiernas) pierna_->setCurrentIndex(pierna_->currentIndex() + 1);
    mostrar();
    if (l->hecha)
        ctx_.dialogs.inform(kTituloMC, QStringLiteral("MACUARE PROCESADO: %1 BOLETOS GANADORES, POZO %2")
                                           .arg(l->ganadores)
                                           .arg(dinero(ctx_, l->pozo)));
}

void Form_Admin_Express::mostrar() {
    proteger([this] {
        const GanadoresDia g = proceso_.ganadores(fecha_);
        QStringList t;
        for (int i = 0; i < kPiernas; ++i)
            t << QStringLiteral("V%1: %2").arg(i + 1).arg(g[i].isEmpty() ? QStringLiteral("-") : textoGanadores(g[i]));
        piernas_->setText(t.join(QStringLiteral("   ")));
        QString total;
        llenar(vivos_, filasVivos(ctx_, proceso_.vivos(fecha_), &total));
        total_->setText(total);
    });
}

// ---------------------------------------------------------------- Form_Pant_MC

Form_Pant_MC::Form_Pant_MC(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_Pant_MC"), QStringLiteral("MACUARE")), proceso_(ctx) {
    auto* titulo = new QLabel(QStringLiteral("MACUARE"));
    titulo->setObjectName(QStringLiteral("titulo"));
    titulo->setAlignment(Qt::AlignCenter);
    fecha_ = new QLabel;
    fecha_->setObjectName(QStringLiteral("fecha"));
    fecha_->setAlignment(Qt::AlignCenter);
    auto* g = new QGridLayout;
    for (int i = 0; i < kPiernas; ++i) {
        auto* v = new QLabel(QStringLiteral("VALIDA %1").arg(i + 1));
        v->setProperty("class", "valida");
        v->setAlignment(Qt::AlignCenter);
        auto* c = new QLabel;
        c->setProperty("class", "carrera");
        c->setAlignment(Qt::AlignCenter);
        auto* w = new QLabel;
        w->setProperty("class", "ganador");
        w->setAlignment(Qt::AlignCenter);
        carreras_ << c;
        ganadores_ << w;
        g->addWidget(v, 0, i);
        g->addWidget(c, 1, i);
        g->addWidget(w, 2, i);
    }
    pozo_ = new QLabel;
    pozo_->setObjectName(QStringLiteral("pozo"));
    pozo_->setAlignment(Qt::AlignCenter);
    vivos_ = new QLabel;
    vivos_->setObjectName(QStringLiteral("vivos"));
    vivos_->setAlignment(Qt::AlignCenter);
    auto* raiz = new QVBoxLayout(this);
    raiz->addWidget(titulo);
    raiz->addWidget(fecha_);
    raiz->addLayout(g);
    raiz->addStretch(1);
    raiz->addWidget(pozo_);
    raiz->addWidget(vivos_);
    raiz->addStretch(1);
    timer_ = new QTimer(this);
    timer_->setInterval(kRefrescoMs);
    connect(timer_, &QTimer::timeout, this, [this] { refrescar(); });
    timer_->start();
    refrescar();
}

void Form_Pant_MC::refrescar() {
    enSegundoPlano([this] {
        const QString fecha = fechaTrabajo(ctx_);
        fecha_->setText(fechaVista(fecha));
        const DiaMacuare d = proceso_.dia(fecha);
        const GanadoresDia g = proceso_.ganadores(fecha);
        for (int i = 0; i < kPiernas; ++i) {
            carreras_[i]->setText(QStringLiteral("CARRERA %1").arg(d.carrera(i)));
            ganadores_[i]->setText(g[i].isEmpty() ? QStringLiteral("-") : textoGanadores(g[i]));
        }
        long long boletos = 0;
        for (const VivosGrupo& v : proceso_.vivos(fecha)) boletos += v.boletos;
        const std::optional<Liquidacion> l = proceso_.liquidacion(fecha);
        const double pozo = l ? l->pozo : proceso_.pozoHastaAhora(fecha);
        pozo_->setText(QStringLiteral("POZO: ") + dinero(ctx_, pozo));
        if (!l)
            vivos_->setText(QStringLiteral("BOLETOS VIVOS: %1").arg(boletos));
        else if (l->ganadores > 0)
            vivos_->setText(QStringLiteral("BOLETOS GANADORES: %1").arg(l->ganadores));
        else
            vivos_->setText(QStringLiteral("SIN GANADORES: EL POZO PASA AL PROXIMO MACUARE"));
    });
}

// ---------------------------------------------------------------- Form_combinaciones

Form_combinaciones::Form_combinaciones(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_combinaciones"), QStringLiteral("COMBINACIONES MACUARE"),
              Centrado::SegunAjuste) {
    setWindowFlag(Qt::Window);
    fecha_ = fechaTrabajoEn(ctx, QStringLiteral("DTPicker1"));
    auto* buscar = boton(QStringLiteral("Buscar"), QStringLiteral("Boton_Buscar"));
    auto* imprimir = boton(QStringLiteral("Imprimir"), QStringLiteral("Boton_Imprimir"));
    grilla_ = tabla(QStringLiteral("Grilla"), {" COMBINACION ", " BOLETOS ", " MONTO ", " ESTATUS "});
    total_ = new QLabel;
    total_->setObjectName(QStringLiteral("totales"));
    auto* fila = new QHBoxLayout;
    fila->addWidget(new QLabel(QStringLiteral("Fecha")));
    fila->addWidget(fecha_);
    fila->addWidget(buscar);
    fila->addWidget(imprimir);
    fila->addStretch(1);
    auto* raiz = new QVBoxLayout(this);
    raiz->addLayout(fila);
    raiz->addWidget(grilla_, 1);
    raiz->addWidget(total_);
    primerFoco(buscar);
    connect(buscar, &QPushButton::clicked, this, [this] { Buscar_Click(); });
    connect(imprimir, &QPushButton::clicked, this, [this] { Imprimir_Click(); });
    Buscar_Click();
}

void Form_combinaciones::Buscar_Click() {
    const auto v = intentar([this] { return combinacionesDelDia(ctx_, fechaDe(fecha_)); });
    if (!v) return;
    QVector<QStringList> filas;
    double monto = 0;
    long long boletos = 0;
    for (const CombinacionVendida& c : *v) {
        filas << QStringList{c.combinacion, QString::number(c.boletos), dinero(ctx_, c.monto), QString::number(c.estatus)};
        monto += c.monto;
        boletos += c.boletos;
    }
    llenar(grilla_, filas);
    total_->setText(QStringLiteral("COMBINACIONES: %1   BOLETOS: %2   MONTO: %3")
                        .arg(v->size())
                        .arg(boletos)
                        .arg(dinero(ctx_, monto)));
}

bool Form_combinaciones::Imprimir_Click() {
    const auto n = intentar([this] { return llenarRptMacuare(ctx_, fechaDe(fecha_)); });
    if (!n) return false;
    if (*n == 0) {
        ctx_.dialogs.refuse(texto::TituloBusqueda, texto::SinRegistros);
        return false;
    }
    return abrirReporte(ctx_, 13, {}, this) != nullptr;
}

}  // namespace hipico
