#include "reportes/Documento.h"

#include "reportes/Formatos.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <QLocale>
#include <QPagedPaintDevice>
#include <QPageSize>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace hipico {

namespace {

constexpr double kMargen = 30;         // around the page
constexpr double kPie = 16;            // "Página N de M" at the bottom
constexpr double kSeparacion = 12;     // between the table and a chart beside it
constexpr double kAltoGrafico = 230;   // a chart under the totals
const QColor kGrisCabeza(225, 229, 236);
const QColor kGrisFila(246, 247, 250);
const QColor kGrisTotal(236, 238, 242);
const QColor kTinta(30, 30, 30);

QFont fuente(int pixeles, bool negrita = false) {
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setPixelSize(pixeles);
    f.setBold(negrita);
    f.setHintingPreference(QFont::PreferNoHinting);
    return f;
}

// The text, cut with "…" when it is wider than the space.
QString cabe(const QFontMetricsF& m, const QString& texto, double ancho) {
    return m.horizontalAdvance(texto) <= ancho ? texto : m.elidedText(texto, Qt::ElideRight, ancho);
}

const QColor& colorSerie(int i) {
    static const QColor colores[] = {QColor(46, 104, 170), QColor(222, 129, 40), QColor(72, 150, 82),
                                     QColor(190, 60, 60),  QColor(126, 92, 170), QColor(120, 120, 120)};
    return colores[i % 6];
}

// Round steps for an axis from lo to hi in about four steps.
double pasoRedondo(double lo, double hi) {
    const double bruto = (hi - lo) / 4;
    if (bruto <= 0) return 1;
    const double magnitud = std::pow(10, std::floor(std::log10(bruto)));
    const double n = bruto / magnitud;
    return (n <= 1 ? 1 : n <= 2 ? 2 : n <= 5 ? 5 : 10) * magnitud;
}

}  // namespace

Documento::Documento(Plantilla plantilla, Recordset filas, Cabecera cabecera, bool enDolares)
    : plantilla_(std::move(plantilla)), filas_(std::move(filas)), cabecera_(std::move(cabecera)), enDolares_(enDolares) {
    for (const Plantilla::Columna& c : plantilla_.columnas) indices_ << filas_.columns().indexOf(c.campo);
    const int letra = plantilla_.letra;
    cuerpo_ = fuente(letra);
    negrita_ = fuente(letra, true);
    titulo_ = fuente(letra + 6, true);
    empresa_ = fuente(letra + 2, true);
    pequena_ = fuente(std::max(6, letra - 1));
    medidaCuerpo_ = QFontMetricsF(cuerpo_);
    medidaNegrita_ = QFontMetricsF(negrita_);
    fila_ = std::round(letra * 1.55);
    for (const QString& l : plantilla_.lineas) encabezado_ << sustituir(l, 0);
    QStringList valores;
    for (const Plantilla::Parametro& p : plantilla_.parametros)
        if (!p.etiqueta.isEmpty()) valores << p.etiqueta + QStringLiteral(": ") + Row::toText(p.valor);
    if (!valores.isEmpty()) encabezado_ << valores.join(QStringLiteral("     "));
    calcularBarras();
    maquetar();
}

const Documento::Corrida& Documento::corrida(bool negrita, const QString& texto) const {
    QHash<QString, Corrida>& cache = corridas_[negrita ? 1 : 0];
    if (const auto it = cache.constFind(texto); it != cache.constEnd()) return *it;
    if (cache.size() > 50000) cache.clear();  // a list of unique texts: memory stays bounded
    QTextLayout layout(texto, negrita ? negrita_ : cuerpo_);
    layout.beginLayout();
    const QTextLine linea = layout.createLine();
    layout.endLayout();
    return *cache.insert(texto, Corrida{layout.glyphRuns(), linea.naturalTextWidth(), linea.ascent()});
}

void Documento::escribir(QPainter& p, bool negrita, const QRectF& r, bool derecha, const QString& texto) const {
    const Corrida* c = &corrida(negrita, texto);
    if (c->ancho > r.width())
        c = &corrida(negrita, (negrita ? medidaNegrita_ : medidaCuerpo_).elidedText(texto, Qt::ElideRight, r.width()));
    const QFontMetricsF& m = negrita ? medidaNegrita_ : medidaCuerpo_;
    const double base = r.center().y() + (m.ascent() - m.descent()) / 2;
    const QPointF origen(derecha ? r.right() - c->ancho : r.left(), base - c->ascenso);
    for (const QGlyphRun& g : c->glifos) p.drawGlyphRun(origen, g);
}

QSizeF Documento::tamano() const {
    const QSizeF carta = QPageSize(QPageSize::Letter).size(QPageSize::Point);
    return plantilla_.horizontal ? carta.transposed() : carta;
}

QPageLayout Documento::diseno() const {
    return QPageLayout(QPageSize(QPageSize::Letter),
                       plantilla_.horizontal ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF());
}

QString Documento::sustituir(const QString& texto, int fila) const {
    QString out;
    qsizetype desde = 0;
    for (auto it = marcaCampo().globalMatch(texto); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        const QString campo = m.captured(1);
        QString valor;
        bool parametro = false;
        for (const Plantilla::Parametro& p : plantilla_.parametros)
            if (p.nombre == campo) {
                valor = Row::toText(p.valor);
                parametro = true;
            }
        if (!parametro && fila >= 0 && fila < filas_.size()) {
            // The mark's format, else the column's, else the value as it is.
            QString formato = m.captured(2);
            if (!m.hasCaptured(2))
                for (const Plantilla::Columna& c : plantilla_.columnas)
                    if (c.campo == campo) formato = c.formato;
            valor = formatear(filas_[fila].value(campo), formato, enDolares_);
        }
        out += texto.mid(desde, m.capturedStart() - desde) + valor;
        desde = m.capturedEnd();
    }
    return out + texto.mid(desde);
}

QString Documento::celda(int fila, int columna) const {
    const int i = indices_[columna];
    return formatear(i >= 0 ? filas_[fila].at(i) : QVariant(), plantilla_.columnas[columna].formato, enDolares_);
}

QString Documento::total(const Linea& linea, int columna) const {
    const Plantilla::Columna& c = plantilla_.columnas[columna];
    if (c.total == Plantilla::Total::Ninguno) return {};
    if (c.total == Plantilla::Total::Cuenta) return formatearNumero(linea.totales[columna], QStringLiteral("#,##0"), false);
    return formatearNumero(linea.totales[columna], c.formato, enDolares_);
}

void Documento::calcularBarras() {
    if (!plantilla_.grafico) return;
    const Plantilla::Grafico& g = *plantilla_.grafico;
    barras_.titulo = g.titulo;
    for (const QString& s : g.series) {
        QString titulo = s.toUpper();
        for (const Plantilla::Columna& c : plantilla_.columnas)
            if (c.campo == s && !c.titulo.trimmed().isEmpty()) titulo = c.titulo.trimmed();
        barras_.series << titulo;
    }
    QString formato;
    for (const Plantilla::Columna& c : plantilla_.columnas)
        if (c.campo == g.categoria) formato = c.formato;
    const int cat = filas_.columns().indexOf(g.categoria);
    QVector<int> series;
    for (const QString& s : g.series) series << filas_.columns().indexOf(s);
    for (const Row& r : filas_) {
        const QString categoria = formatear(r.at(cat), formato, enDolares_);
        qsizetype i = barras_.categorias.indexOf(categoria);
        if (i < 0) {
            i = barras_.categorias.size();
            barras_.categorias << categoria;
            barras_.valores << QVector<double>(series.size(), 0);
        }
        for (int s = 0; s < series.size(); ++s) barras_.valores[i][s] += Row::toNumber(r.at(series[s]));
    }
}

void Documento::maquetar() {
    const QSizeF pagina = tamano();
    // The heading: company and print time, title, heading lines, then the column titles.
    cabezaAlto_ = kMargen + plantilla_.letra * 2 + 4 + (plantilla_.letra + 6) * 1.5 + encabezado_.size() * (plantilla_.letra + 2) * 1.4 + 8;
    const double cuerpo = pagina.height() - cabezaAlto_ - (fila_ + 6) - kPie - kMargen;

    // Columns share the table's width by their weights.
    double anchoTabla = pagina.width() - 2 * kMargen;
    if (plantilla_.grafico && plantilla_.grafico->derecha)
        anchoTabla = anchoTabla * (1 - plantilla_.grafico->ancho / 100) - kSeparacion;
    double pesos = 0;
    for (const Plantilla::Columna& c : plantilla_.columnas) pesos += c.ancho;
    x_.clear();
    double x = kMargen;
    for (const Plantilla::Columna& c : plantilla_.columnas) {
        x_ << x;
        x += anchoTabla * c.ancho / pesos;
    }
    x_ << x;

    // Lines: group headings and totals around the rows, then the grand total.
    const int columnas = static_cast<int>(plantilla_.columnas.size());
    const int niveles = static_cast<int>(plantilla_.grupos.size());
    QVector<int> campoGrupo;
    for (const Plantilla::Grupo& g : plantilla_.grupos) campoGrupo << filas_.columns().indexOf(g.campo);
    QVector<QVector<double>> acumulado(niveles + 1, QVector<double>(columnas, 0));
    QVector<int> inicio(niveles, 0);
    lineas_.clear();
    lineas_.reserve(filas_.size() + 2);
    const auto sumar = [&](int fila) {
        for (int c = 0; c < columnas; ++c) {
            const Plantilla::Total t = plantilla_.columnas[c].total;
            if (t == Plantilla::Total::Ninguno) continue;
            const double v = t == Plantilla::Total::Cuenta ? 1.0 : Row::toNumber(indices_[c] >= 0 ? filas_[fila].at(indices_[c]) : QVariant());
            for (int n = 0; n <= niveles; ++n) acumulado[n][c] += v;
        }
    };
    const auto cerrar = [&](int desdeNivel) {
        for (int n = niveles - 1; n >= desdeNivel; --n) {
            if (!plantilla_.grupos[n].pie.isEmpty())
                lineas_.append({Linea::Tipo::PieGrupo, inicio[n], n, sustituir(plantilla_.grupos[n].pie, inicio[n]),
                                acumulado[n + 1], fila_ + 2});
            acumulado[n + 1].fill(0);
        }
    };
    for (int f = 0; f < filas_.size(); ++f) {
        int cambia = niveles;
        if (f == 0) cambia = 0;
        else
            for (int n = 0; n < niveles; ++n)
                if (filas_[f].at(campoGrupo[n]) != filas_[f - 1].at(campoGrupo[n])) {
                    cambia = n;
                    break;
                }
        if (f > 0) cerrar(cambia);
        for (int n = cambia; n < niveles; ++n) {
            inicio[n] = f;
            lineas_.append({Linea::Tipo::Grupo, f, n, sustituir(plantilla_.grupos[n].titulo, f), {}, fila_ + 3});
        }
        lineas_.append({Linea::Tipo::Detalle, f, niveles, {}, {}, fila_});
        sumar(f);
    }
    if (!filas_.empty()) cerrar(0);
    if (!plantilla_.totalGeneral.isEmpty())
        lineas_.append({Linea::Tipo::TotalGeneral, -1, 0, plantilla_.totalGeneral, acumulado[0], fila_ + 6});
    if (plantilla_.grafico && !plantilla_.grafico->derecha)
        lineas_.append({Linea::Tipo::Grafico, -1, 0, {}, {}, kAltoGrafico});

    // Pages: a group heading never stays alone at the bottom.
    paginas_ = {QVector<int>()};
    double usado = 0;
    for (int i = 0; i < lineas_.size(); ++i) {
        double necesita = lineas_[i].alto;
        if (lineas_[i].tipo == Linea::Tipo::Grupo && i + 1 < lineas_.size()) necesita += lineas_[i + 1].alto;
        if (usado + necesita > cuerpo && !paginas_.last().isEmpty()) {
            paginas_ << QVector<int>();
            usado = 0;
        }
        paginas_.last() << i;
        usado += lineas_[i].alto;
    }
}

void Documento::pintarEncabezado(QPainter& p, int pagina) const {
    const QSizeF hoja = tamano();
    const double ancho = hoja.width() - 2 * kMargen;
    double y = kMargen;
    p.setPen(kTinta);
    p.setFont(empresa_);
    const double alto1 = plantilla_.letra * 2;
    p.drawText(QRectF(kMargen, y, ancho * 0.65, alto1), Qt::AlignLeft | Qt::AlignVCenter,
               QFontMetricsF(empresa_).elidedText(cabecera_.empresa, Qt::ElideRight, ancho * 0.65));
    p.setFont(pequena_);
    p.drawText(QRectF(kMargen, y, ancho, alto1), Qt::AlignRight | Qt::AlignVCenter,
               QStringLiteral("Impreso: ") + cabecera_.impreso);
    y += alto1 + 4;
    p.setFont(titulo_);
    const double altoTitulo = (plantilla_.letra + 6) * 1.5;
    p.drawText(QRectF(kMargen, y, ancho, altoTitulo), Qt::AlignHCenter | Qt::AlignVCenter, cabecera_.titulo);
    y += altoTitulo;
    const QFont linea = fuente(plantilla_.letra + 2);
    p.setFont(linea);
    const double altoLinea = (plantilla_.letra + 2) * 1.4;
    for (const QString& l : encabezado_) {
        p.drawText(QRectF(kMargen, y, ancho, altoLinea), Qt::AlignHCenter | Qt::AlignVCenter, l);
        y += altoLinea;
    }

    // The column titles, on every page.
    const double cabeza = cabezaAlto_;
    p.fillRect(QRectF(x_.first(), cabeza, x_.last() - x_.first(), fila_ + 6), kGrisCabeza);
    for (int c = 0; c < plantilla_.columnas.size(); ++c) {
        const Plantilla::Columna& col = plantilla_.columnas[c];
        const QRectF celda(x_[c] + 3, cabeza, x_[c + 1] - x_[c] - 6, fila_ + 6);
        escribir(p, true, celda, formatoNumerico(col.formato), col.titulo.trimmed());
    }
    p.setPen(QPen(kTinta, 0.8));
    p.drawLine(QPointF(x_.first(), cabeza + fila_ + 6), QPointF(x_.last(), cabeza + fila_ + 6));

    // The foot: the title and "Página N de M".
    const double pie = hoja.height() - kMargen - kPie;
    p.setPen(QPen(QColor(150, 150, 150), 0.5));
    p.drawLine(QPointF(kMargen, pie + 2), QPointF(hoja.width() - kMargen, pie + 2));
    p.setPen(kTinta);
    p.setFont(pequena_);
    p.drawText(QRectF(kMargen, pie + 3, ancho, kPie - 3), Qt::AlignLeft | Qt::AlignVCenter, cabecera_.titulo);
    p.drawText(QRectF(kMargen, pie + 3, ancho, kPie - 3), Qt::AlignRight | Qt::AlignVCenter,
               QStringLiteral("Página %1 de %2").arg(pagina + 1).arg(paginas()));
}

void Documento::pintarLinea(QPainter& p, const Linea& l, double y, bool par) const {
    const double izquierda = x_.first(), derecha = x_.last();
    const int columnas = static_cast<int>(plantilla_.columnas.size());
    switch (l.tipo) {
    case Linea::Tipo::Detalle: {
        if (par) p.fillRect(QRectF(izquierda, y, derecha - izquierda, l.alto), kGrisFila);
        for (int c = 0; c < columnas; ++c) {
            const QRectF celdaR(x_[c] + 3, y, x_[c + 1] - x_[c] - 6, l.alto);
            const bool numero = formatoNumerico(plantilla_.columnas[c].formato);
            escribir(p, false, celdaR, numero, celda(l.fila, c));
        }
        break;
    }
    case Linea::Tipo::Grupo: {
        p.setFont(negrita_);
        const double sangria = l.nivel * 10;
        p.drawText(QRectF(izquierda + 3 + sangria, y, derecha - izquierda - 6 - sangria, l.alto),
                   Qt::AlignLeft | Qt::AlignBottom, l.texto);
        break;
    }
    case Linea::Tipo::PieGrupo:
    case Linea::Tipo::TotalGeneral: {
        const bool general = l.tipo == Linea::Tipo::TotalGeneral;
        if (general) p.fillRect(QRectF(izquierda, y + 2, derecha - izquierda, l.alto - 2), kGrisTotal);
        p.setPen(QPen(kTinta, general ? 1.0 : 0.5));
        int primera = 0;
        while (primera < columnas && plantilla_.columnas[primera].total == Plantilla::Total::Ninguno) ++primera;
        for (int c = primera; c < columnas; ++c)
            if (plantilla_.columnas[c].total != Plantilla::Total::Ninguno)
                p.drawLine(QPointF(x_[c] + 3, y + 1), QPointF(x_[c + 1] - 3, y + 1));
        p.setPen(kTinta);
        p.setFont(negrita_);
        const QFontMetricsF& m = medidaNegrita_;
        // The label takes the columns before the first total, and the room
        // that total leaves on its left.
        double finEtiqueta = derecha;
        if (primera < columnas)
            finEtiqueta = x_[primera + 1] - 3 - m.horizontalAdvance(total(l, primera)) - 8;
        if (finEtiqueta - izquierda > 12)
            escribir(p, true, QRectF(izquierda + 3, y + 2, finEtiqueta - izquierda - 6, l.alto - 2), false, l.texto);
        for (int c = primera; c < columnas; ++c) {
            const QString t = total(l, c);
            if (t.isEmpty()) continue;
            const QRectF celdaR(x_[c] + 3, y + 2, x_[c + 1] - x_[c] - 6, l.alto - 2);
            escribir(p, true, celdaR, true, t);
        }
        break;
    }
    case Linea::Tipo::Grafico:
        pintarGrafico(p, QRectF(kMargen, y + 8, tamano().width() - 2 * kMargen, l.alto - 8));
        break;
    }
}

void Documento::pintar(QPainter& p, int pagina) const {
    if (pagina < 0 || pagina >= paginas()) return;
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setRenderHint(QPainter::TextAntialiasing, true);
    pintarEncabezado(p, pagina);
    double y = cabezaAlto_ + fila_ + 6;
    int detalle = 0;
    for (int i : paginas_[pagina]) {
        const Linea& l = lineas_[i];
        pintarLinea(p, l, y, l.tipo == Linea::Tipo::Detalle && (detalle++ % 2 == 1));
        y += l.alto;
    }
    if (pagina == 0 && plantilla_.grafico && plantilla_.grafico->derecha) {
        const double izquierda = x_.last() + kSeparacion;
        const double alto = std::min(300.0, tamano().height() - cabezaAlto_ - kPie - kMargen - 8);
        pintarGrafico(p, QRectF(izquierda, cabezaAlto_, tamano().width() - kMargen - izquierda, alto));
    }
    p.restore();
}

void Documento::pintarTodo(QPagedPaintDevice& dispositivo, int dpi) const {
    QPainter p(&dispositivo);
    p.scale(dpi / 72.0, dpi / 72.0);
    for (int i = 0; i < paginas(); ++i) {
        if (i > 0) dispositivo.newPage();
        pintar(p, i);
    }
}

void Documento::pintarGrafico(QPainter& p, const QRectF& area) const {
    const Barras& b = barras_;
    p.save();
    p.setPen(QPen(QColor(180, 180, 180), 0.5));
    p.setBrush(Qt::NoBrush);
    p.drawRect(area);
    const QRectF r = area.adjusted(6, 4, -6, -4);
    p.setPen(kTinta);
    p.setFont(negrita_);
    const double altoTitulo = fila_ + 2;
    p.drawText(QRectF(r.left(), r.top(), r.width(), altoTitulo), Qt::AlignHCenter | Qt::AlignVCenter, b.titulo);

    // Legend at the bottom, one entry per series.
    p.setFont(pequena_);
    const QFontMetricsF mp(pequena_);
    const double altoLeyenda = fila_;
    double xl = r.left();
    const double yl = r.bottom() - altoLeyenda;
    for (int s = 0; s < b.series.size(); ++s) {
        p.fillRect(QRectF(xl, yl + altoLeyenda / 2 - 4, 8, 8), colorSerie(s));
        const double w = mp.horizontalAdvance(b.series[s]);
        p.drawText(QRectF(xl + 11, yl, w + 2, altoLeyenda), Qt::AlignLeft | Qt::AlignVCenter, b.series[s]);
        xl += w + 24;
    }

    double lo = 0, hi = 0;
    for (const auto& v : b.valores)
        for (double x : v) {
            lo = std::min(lo, x);
            hi = std::max(hi, x);
        }
    if (hi - lo <= 0) hi = lo + 1;
    const double paso = pasoRedondo(lo, hi);
    lo = std::floor(lo / paso) * paso;
    hi = std::ceil(hi / paso) * paso;
    // The axis in the local way of writing numbers (1.500, 2,5).
    static const QLocale local(QLocale::Spanish, QLocale::Venezuela);
    const auto etiqueta = [&](double t) { return local.toString(t, 'f', paso < 1 ? 2 : 0); };
    double anchoEje = 0;
    for (double t = lo; t <= hi + paso / 2; t += paso) anchoEje = std::max(anchoEje, mp.horizontalAdvance(etiqueta(t)));
    // Category names that do not fit under their bars go aslant.
    const int n = static_cast<int>(b.categorias.size());
    const double huecoAprox = (r.width() - anchoEje - 8) / std::max(1, n);
    double anchoNombre = 0;
    for (const QString& c : b.categorias) anchoNombre = std::max(anchoNombre, mp.horizontalAdvance(c));
    const bool inclinados = anchoNombre > huecoAprox - 2;
    const double altoNombres = inclinados ? std::min(anchoNombre, 80.0) * 0.71 + fila_ / 2 : fila_;
    const QRectF plano(r.left() + anchoEje + 6, r.top() + altoTitulo + 4, r.width() - anchoEje - 8,
                       r.height() - altoTitulo - 4 - altoLeyenda - altoNombres - 4);
    if (plano.height() < 20 || plano.width() < 20) {
        p.restore();
        return;
    }
    const auto yDe = [&](double v) { return plano.bottom() - (v - lo) / (hi - lo) * plano.height(); };
    for (double t = lo; t <= hi + paso / 2; t += paso) {
        const double y = yDe(t);
        p.setPen(QPen(QColor(225, 225, 225), 0.5));
        p.drawLine(QPointF(plano.left(), y), QPointF(plano.right(), y));
        p.setPen(kTinta);
        p.drawText(QRectF(r.left(), y - fila_ / 2, anchoEje, fila_), Qt::AlignRight | Qt::AlignVCenter, etiqueta(t));
    }
    if (n > 0 && !b.series.isEmpty()) {
        const double hueco = plano.width() / n;
        const double barra = hueco * 0.8 / b.series.size();
        const double cero = yDe(0);
        for (int c = 0; c < n; ++c) {
            const double x0 = plano.left() + c * hueco + hueco * 0.1;
            for (int s = 0; s < b.series.size(); ++s) {
                const double y = yDe(b.valores[c][s]);
                p.fillRect(QRectF(QPointF(x0 + s * barra, std::min(y, cero)), QSizeF(barra * 0.92, std::fabs(cero - y))),
                           colorSerie(s));
            }
            p.setPen(kTinta);
            if (inclinados) {
                // Ends under the middle of its bars, rising to the left at 45 degrees.
                p.save();
                p.translate(plano.left() + (c + 0.5) * hueco, plano.bottom() + 4);
                p.rotate(-45);
                p.drawText(QRectF(-82, -fila_ / 2, 80, fila_), Qt::AlignRight | Qt::AlignVCenter,
                           cabe(mp, b.categorias[c], 80));
                p.restore();
            } else {
                p.drawText(QRectF(plano.left() + c * hueco, plano.bottom() + 2, hueco, fila_),
                           Qt::AlignHCenter | Qt::AlignTop, b.categorias[c]);
            }
        }
        p.setPen(QPen(kTinta, 0.8));
        p.drawLine(QPointF(plano.left(), cero), QPointF(plano.right(), cero));
    }
    p.restore();
}

}  // namespace hipico
