#include "admin/Form_GerenciaTF.h"

#include "admin/FilaCarrera.h"

#include "core/Context.h"
#include "core/Formato.h"
#include "gui/Campos.h"
#include "reportes/Lanzador.h"
#include "sales/TicketKeys.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
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

QTableWidget* tabla(const char* nombre, const QStringList& cabeceras) {
    auto* t = new QTableWidget(0, cabeceras.size());
    t->setObjectName(QString::fromLatin1(nombre));
    t->setHorizontalHeaderLabels(cabeceras);
    t->verticalHeader()->hide();
    t->setEditTriggers(QAbstractItemView::NoEditTriggers);
    t->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    return t;
}

void llenar(QTableWidget* t, int fila, const QStringList& celdas) {
    for (int k = 0; k < celdas.size(); ++k) t->setItem(fila, k, new QTableWidgetItem(celdas[k]));
}

}  // namespace

Form_GerenciaTF::Form_GerenciaTF(Context& ctx, QWidget* parent)
    : Ventana(ctx, parent, QStringLiteral("Form_GerenciaTF"), QStringLiteral("Admin: ") + ctx.session.nombre,
              Centrado::SegunAjuste),
      logica_(ctx) {
    auto* raiz = new QVBoxLayout(this);
    const FilaCarrera fila = filaCarrera(
        ctx, this, raiz,
        {QStringLiteral("DTPicker1"), ctx.session.fecha.isEmpty() ? fechaSql(ctx.clock.today()) : ctx.session.fecha,
         false, {}, {}},
        [this] { actualizar(); });
    fecha_ = fila.fecha;
    carrera_ = fila.carrera;
    reloj_ = fila.reloj;

    auto* columnas = new QHBoxLayout;
    raiz->addLayout(columnas, 1);
    auto* izquierda = new QVBoxLayout;
    caballos_ = tabla("caballos", {QStringLiteral("CAB"), QStringLiteral("CABALLO"), QStringLiteral("TABLAS"),
                                   QStringLiteral("VENTA")});
    izquierda->addWidget(caballos_, 1);
    totales_ = new QLabel;
    totales_->setObjectName(QStringLiteral("totales"));
    izquierda->addWidget(totales_);
    auto* grupoMensaje = new QGroupBox(QStringLiteral("MENSAJE A LAS TAQUILLAS"));
    auto* gm = new QHBoxLayout(grupoMensaje);
    mensaje_ = caja(QStringLiteral("mensaje"), nullptr, 255);
    QPushButton* enviar = boton(QStringLiteral("Enviar"), QStringLiteral("enviarMensaje"));
    gm->addWidget(mensaje_, 1);
    gm->addWidget(enviar);
    izquierda->addWidget(grupoMensaje);
    columnas->addLayout(izquierda, 2);

    auto* grupoBusqueda = new QGroupBox(QStringLiteral("BÚSQUEDA DE BOLETOS"));
    auto* gb = new QGridLayout(grupoBusqueda);
    clase_ = new QComboBox;
    clase_->setObjectName(QStringLiteral("clase"));
    clase_->addItems(GerenciaTablaFija::clases());
    caballo_ = caja(QStringLiteral("caballo"), nullptr, 2, SoloNumeros, 60);
    historico_ = new QCheckBox(QStringLiteral("Días anteriores"));
    QPushButton* buscar = boton(QStringLiteral("Buscar"), QStringLiteral("buscar"));
    QPushButton* imprimir = boton(QStringLiteral("Imprimir"), QStringLiteral("imprimir"));
    gb->addWidget(clase_, 0, 0);
    gb->addWidget(new QLabel(QStringLiteral("CABALLO")), 0, 1);
    gb->addWidget(caballo_, 0, 2);
    gb->addWidget(historico_, 0, 3);
    gb->addWidget(buscar, 0, 4);
    gb->addWidget(imprimir, 0, 5);
    boletos_ = tabla("boletos", {QStringLiteral(" BOLETO "), QStringLiteral(" CAR "), QStringLiteral(" CAB "),
                                 QStringLiteral(" TABLAS "), QStringLiteral(" MONTO "), QStringLiteral(" COBRADO "),
                                 QStringLiteral(" ESTATUS "), QStringLiteral(" CH ")});
    gb->addWidget(boletos_, 1, 0, 1, 6);
    sumas_ = new QLabel;
    sumas_->setObjectName(QStringLiteral("sumas"));
    gb->addWidget(sumas_, 2, 0, 1, 6);
    columnas->addWidget(grupoBusqueda, 3);

    connect(enviar, &QPushButton::clicked, this, [this] { logica_.mensaje(mensaje_->text()); });
    connect(buscar, &QPushButton::clicked, this, &Form_GerenciaTF::buscar);
    connect(imprimir, &QPushButton::clicked, this, [this] {
        if (const auto p = logica_.reporte(filtro())) abrirReporteBoletos(ctx_, 2, *p, this);
    });
    actualizar();
    resize(1100, 640);
    primerFoco(carrera_);
}

GerenciaTablaFija::Filtro Form_GerenciaTF::filtro() const {
    GerenciaTablaFija::Filtro f;
    f.fecha = fechaSql(fecha_->date());
    f.clase = clase_->currentText();
    f.caballo = caballo_->text();
    f.historico = historico_->isChecked();
    return f;
}

void Form_GerenciaTF::actualizar() {
    const QString fecha = fechaSql(fecha_->date());
    const long long carrera = carrera_->currentText().toLongLong();
    const bool d = ctx_.session.enDolares();
    const auto lista = logica_.ventas(fecha, carrera);
    caballos_->setRowCount(lista.size());
    for (int i = 0; i < lista.size(); ++i)
        llenar(caballos_, i, {QString::number(lista[i].numero), lista[i].texto, textoNumero(lista[i].tablas),
                              formatoMonto(lista[i].venta, d)});
    const auto t = logica_.totales(fecha);
    totales_->setText((logica_.cerrada(fecha, carrera) ? QStringLiteral("CERRADO     ") : QString()) +
                      QStringLiteral("VENTA: %1     Monto Cobrado :           %2")
                          .arg(formatoMonto(t ? t->venta : 0, d), formatoMonto(t ? t->cobrado : 0, d)));
}

void Form_GerenciaTF::buscar() {
    const auto b = logica_.buscar(filtro());
    boletos_->setRowCount(b ? b->filas.size() : 0);
    sumas_->clear();
    if (!b) return;
    const bool d = ctx_.session.enDolares();
    int i = 0;
    for (const Row& r : b->filas)
        llenar(boletos_, i++, {r.text("nu_boleto"), r.text("carrera"), r.text("caballo"), textoNumero(r.number("tablas")),
                               formatoMonto(r.number("monto"), d), formatoMonto(r.number("cobrado"), d),
                               r.text("estatus"), r.text("ch")});
    sumas_->setText(QStringLiteral("MONTO: %1     COBRADO: %2     POR COBRAR: %3")
                        .arg(formatoMonto(b->sumamonto, d), formatoMonto(b->sumacobrado, d),
                             formatoMonto(b->sumaporcobrar, d)));
}

}  // namespace hipico
