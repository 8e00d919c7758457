#include "reportes/Plantilla.h"

#include "reportes/Formatos.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QXmlStreamReader>

namespace hipico {

namespace {

// A field or table name: nothing that could be more than a name in SQL.
bool esNombre(const QString& texto) {
    static const QRegularExpression nombre(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
    return nombre.match(texto).hasMatch();
}

QStringList lista(const QString& texto) {
    QStringList out;
    for (const QString& parte : texto.split(QLatin1Char(','), Qt::SkipEmptyParts)) out << parte.trimmed();
    return out;
}

// Reads one file; every fault becomes one message naming the file and the line.
class Lector {
public:
    explicit Lector(const QString& archivo) : archivo_(archivo) {}

    Plantilla leer() {
        QFile f(archivo_);
        if (!QFileInfo::exists(archivo_))
            throw ErrorPlantilla(QStringLiteral("NO SE ENCONTRO LA PLANTILLA DEL REPORTE:\n%1").arg(archivo_));
        if (!f.open(QIODevice::ReadOnly))
            throw ErrorPlantilla(QStringLiteral("NO SE PUDO LEER LA PLANTILLA DEL REPORTE:\n%1").arg(archivo_));
        xml_.setDevice(&f);
        p_.archivo = archivo_;
        if (!xml_.readNextStartElement()) falla(xml_.hasError() ? xml_.errorString() : QStringLiteral("el archivo no tiene <reporte>"));
        if (xml_.name() != QLatin1String("reporte")) falla(QStringLiteral("se esperaba <reporte>"));
        reporte();
        // Nothing but comments after the report.
        while (!xml_.atEnd() && !xml_.hasError())
            if (xml_.readNext() == QXmlStreamReader::StartElement) falla(QStringLiteral("hay algo después de </reporte>"));
        if (xml_.hasError()) falla(xml_.errorString());
        if (p_.tabla.isEmpty()) falla(QStringLiteral("falta <datos tabla=\"...\">"));
        if (p_.columnas.isEmpty()) falla(QStringLiteral("el reporte no tiene ninguna <columna>"));
        return p_;
    }

private:
    [[noreturn]] void falla(const QString& detalle) const {
        throw ErrorPlantilla(QStringLiteral("LA PLANTILLA DEL REPORTE NO ES VALIDA:\n%1\n(línea %2: %3)")
                                 .arg(archivo_)
                                 .arg(xml_.lineNumber())
                                 .arg(detalle));
    }

    QString atributo(const char* nombre, bool requerido = false) {
        const QString v = xml_.attributes().value(QLatin1String(nombre)).toString();
        if (requerido && v.trimmed().isEmpty())
            falla(QStringLiteral("<%1> necesita el atributo %2").arg(xml_.name().toString(), QLatin1String(nombre)));
        return v;
    }

    QString nombre(const char* atributoNombre) {
        const QString v = atributo(atributoNombre, true).trimmed();
        if (!esNombre(v)) falla(QStringLiteral("\"%1\" no es un nombre de campo").arg(v));
        return v;
    }

    double numero(const char* atributoNombre, double porDefecto, double minimo, double maximo) {
        const QString v = atributo(atributoNombre);
        if (v.isEmpty()) return porDefecto;
        bool ok = false;
        const double n = v.toDouble(&ok);
        if (!ok || n < minimo || n > maximo)
            falla(QStringLiteral("%1=\"%2\" debe ser un número entre %3 y %4")
                      .arg(QLatin1String(atributoNombre), v)
                      .arg(minimo)
                      .arg(maximo));
        return n;
    }

    // Heading and label texts: each {campo:formato} names a known format.
    QString conCampos(const QString& texto) {
        for (auto it = marcaCampo().globalMatch(texto); it.hasNext();) {
            const QString formato = it.next().captured(2);
            if (!formatoConocido(formato)) falla(QStringLiteral("formato desconocido \"%1\"").arg(formato));
        }
        return texto;
    }

    void reporte() {
        p_.titulo = atributo("titulo");
        const QString orientacion = atributo("orientacion");
        if (!orientacion.isEmpty() && orientacion != QLatin1String("vertical") &&
            orientacion != QLatin1String("horizontal"))
            falla(QStringLiteral("orientacion debe ser \"vertical\" u \"horizontal\""));
        p_.horizontal = orientacion == QLatin1String("horizontal");
        p_.letra = static_cast<int>(numero("letra", 8, 6, 14));
        while (xml_.readNextStartElement()) {
            const auto n = xml_.name();
            if (n == QLatin1String("datos")) datos();
            else if (n == QLatin1String("parametro")) parametro();
            else if (n == QLatin1String("linea")) p_.lineas << conCampos(xml_.readElementText().trimmed());
            else if (n == QLatin1String("grupo")) grupo();
            else if (n == QLatin1String("columna")) columna();
            else if (n == QLatin1String("totales")) totales();
            else if (n == QLatin1String("grafico")) grafico();
            else falla(QStringLiteral("elemento desconocido <%1>").arg(n.toString()));
            if (xml_.hasError()) falla(xml_.errorString());
        }
    }

    void datos() {
        p_.tabla = nombre("tabla");
        for (const QString& o : lista(atributo("orden"))) {
            const QStringList partes = o.split(QLatin1Char(' '), Qt::SkipEmptyParts);
            const bool sentido = partes.size() == 2 && (partes[1].compare(QLatin1String("desc"), Qt::CaseInsensitive) == 0 ||
                                                       partes[1].compare(QLatin1String("asc"), Qt::CaseInsensitive) == 0);
            if (partes.isEmpty() || partes.size() > 2 || !esNombre(partes[0]) || (partes.size() == 2 && !sentido))
                falla(QStringLiteral("orden \"%1\" no es \"campo\" ni \"campo desc\"").arg(o));
            p_.orden << partes.join(QLatin1Char(' '));
        }
        xml_.skipCurrentElement();
    }

    void parametro() {
        Plantilla::Parametro par;
        par.nombre = atributo("nombre", true);
        const QString tipo = atributo("tipo");
        if (!tipo.isEmpty() && tipo != QLatin1String("texto") && tipo != QLatin1String("entero"))
            falla(QStringLiteral("tipo del parámetro debe ser \"texto\" o \"entero\""));
        par.entero = tipo == QLatin1String("entero");
        par.etiqueta = atributo("etiqueta");
        const QString valor = atributo("valor");
        par.valor = par.entero ? QVariant(valor.toInt()) : QVariant(valor);
        p_.parametros << par;
        xml_.skipCurrentElement();
    }

    void grupo() {
        Plantilla::Grupo g;
        g.campo = nombre("campo");
        g.titulo = conCampos(atributo("titulo"));
        if (g.titulo.isEmpty()) g.titulo = QStringLiteral("{%1}").arg(g.campo);
        g.pie = conCampos(atributo("pie"));
        p_.grupos << g;
        xml_.skipCurrentElement();
    }

    void columna() {
        Plantilla::Columna c;
        c.campo = nombre("campo");
        c.titulo = atributo("titulo");
        c.formato = atributo("formato");
        if (!formatoConocido(c.formato)) falla(QStringLiteral("formato desconocido \"%1\"").arg(c.formato));
        c.ancho = numero("ancho", 1, 0.1, 20);
        const QString total = atributo("total");
        if (total == QLatin1String("suma")) c.total = Plantilla::Total::Suma;
        else if (total == QLatin1String("cuenta")) c.total = Plantilla::Total::Cuenta;
        else if (!total.isEmpty()) falla(QStringLiteral("total debe ser \"suma\" o \"cuenta\""));
        if (c.total == Plantilla::Total::Suma && !formatoNumerico(c.formato))
            falla(QStringLiteral("la columna %1 suma pero su formato no es numérico").arg(c.campo));
        p_.columnas << c;
        xml_.skipCurrentElement();
    }

    void totales() {
        p_.totalGeneral = atributo("titulo");
        if (p_.totalGeneral.isEmpty()) p_.totalGeneral = QStringLiteral("TOTAL GENERAL");
        xml_.skipCurrentElement();
    }

    void grafico() {
        Plantilla::Grafico g;
        g.titulo = atributo("titulo");
        g.categoria = nombre("categoria");
        for (const QString& s : lista(atributo("series", true))) {
            if (!esNombre(s)) falla(QStringLiteral("\"%1\" no es un nombre de campo").arg(s));
            g.series << s;
        }
        const QString posicion = atributo("posicion");
        if (!posicion.isEmpty() && posicion != QLatin1String("derecha") && posicion != QLatin1String("abajo"))
            falla(QStringLiteral("posicion debe ser \"derecha\" o \"abajo\""));
        g.derecha = posicion != QLatin1String("abajo");
        g.ancho = numero("ancho", 35, 15, 60);
        p_.grafico = g;
        xml_.skipCurrentElement();
    }

    QString archivo_;
    QXmlStreamReader xml_;
    Plantilla p_;
};

}  // namespace

const QRegularExpression& marcaCampo() {
    static const QRegularExpression llave(QStringLiteral("\\{([A-Za-z_][A-Za-z0-9_]*)(?::([^}]*))?\\}"));
    return llave;
}

QStringList camposDeTexto(const QString& texto) {
    QStringList out;
    for (auto it = marcaCampo().globalMatch(texto); it.hasNext();) out << it.next().captured(1);
    return out;
}

QStringList Plantilla::camposUsados() const {
    QStringList out;
    for (const Columna& c : columnas) out << c.campo;
    for (const QString& o : orden) out << o.section(QLatin1Char(' '), 0, 0);
    for (const Grupo& g : grupos) out << g.campo << camposDeTexto(g.titulo) << camposDeTexto(g.pie);
    for (const QString& l : lineas) out << camposDeTexto(l);
    if (grafico) out << grafico->categoria << grafico->series;
    // Parameters are not fields of the table.
    for (const Parametro& p : parametros) out.removeAll(p.nombre);
    out.removeDuplicates();
    return out;
}

Plantilla leerPlantilla(const QString& archivo) { return Lector(archivo).leer(); }

void entregarParametros(Plantilla& plantilla, const QString& parametro1, qint32 parametro2) {
    for (Plantilla::Parametro& p : plantilla.parametros) {
        if (p.nombre == QLatin1String("Parametro1")) p.valor = parametro1;
        else if (p.nombre == QLatin1String("Parametro2")) p.valor = parametro2;
    }
}

}  // namespace hipico
