#include "admin/ReglaDividendo.h"

#include <algorithm>
#include <cmath>

namespace hipico {

namespace {

QString col(int corredores, const char* campo) { return QString::number(corredores) + QLatin1String(campo); }

double num(const Row& r, const QString& c) { return r.has(c) ? r.number(c) : 0.0; }
int ent(const Row& r, const QString& c) { return r.has(c) ? static_cast<int>(r.integer(c)) : 0; }

bool entre(double d, double desde, double hasta) { return desde <= d && d <= hasta; }

// A band's amount as a fixed dividend (option 0) or added to D.
double montoBanda(double valor, int opcion, double d) { return opcion == 0 ? valor : d + valor; }

// An open band: D plus the amount, or counted per two units.
double bandaAbierta(double d, double valor, int mododiv) {
    return mododiv == 0 ? d + valor : 2 * (std::floor(d / 2) + valor);
}

// A cap of 0 is no cap.
double topar(double x, double cap) { return cap > 0 && x > cap ? cap : x; }

double centimos(double x) { return std::round(x * 100) / 100; }

DividendoGrupo pagar(double x) {
    DividendoGrupo g;
    x = centimos(x);
    if (x > 0) {
        g.tipo = DividendoGrupo::Tipo::Pagar;
        g.x = x;
    }
    return g;
}

}  // namespace

ReglaDividendo ReglaDividendo::desde(const Row& r, int divopc, int mododiv) {
    ReglaDividendo g;
    g.divopc = divopc;
    g.mododiv = mododiv;
    for (int i = 1; i <= 10; ++i) g.rango[i] = num(r, "rango" + QString::number(i));
    for (int i = 1; i <= 5; ++i) g.valor[i] = num(r, "valor_r" + QString::number(i));
    for (int i = 1; i <= 4; ++i) g.opcion[i] = ent(r, "opciondiv" + QString::number(i));
    g.topefavorito = num(r, "topefavorito");
    g.condicionado = ent(r, "condicionado");
    for (int n = 4; n <= 7; ++n) {
        ReglaCorredores& c = g.corredores[n];
        c.r1 = num(r, col(n, "cabr1"));
        c.r2 = num(r, col(n, "cabr2"));
        c.r3 = num(r, col(n, "cabr3"));
        c.r4 = num(r, col(n, "cabr4"));
        c.vr1 = num(r, col(n, "cabvr1"));
        c.vr2 = num(r, col(n, "cabvr2"));
        c.op1 = ent(r, col(n, "cabop1"));
        c.op2 = ent(r, col(n, "cabop2"));
    }
    g.empate = ent(r, "empate");
    g.empatemin = num(r, "empatemin");
    for (int i = 1; i <= 5; ++i) g.empateBanda[i] = num(r, "empate" + QString::number(i));
    g.redondear = ent(r, "redondear");
    return g;
}

void ReglaDividendo::ampliar(const Row& r) {
    for (int n = 5; n <= 7; ++n) {
        ReglaCorredores& c = corredores[n];
        c.r5 = num(r, col(n, "cabr5"));
        c.r6 = num(r, col(n, "cabr6"));
        c.r7 = num(r, col(n, "cabr7"));
        c.r8 = num(r, col(n, "cabr8"));
        c.vr3 = num(r, col(n, "cabvr3"));
        c.vr4 = num(r, col(n, "cabvr4"));
        c.op3 = ent(r, col(n, "cabop3"));
        c.op4 = ent(r, col(n, "cabop4"));
    }
}

DividendoGrupo calcularDividendo(const ReglaDividendo& r, const DatosDividendo& d) {
    const double D = d.oficial;
    // Amounts the administrator sets are paid as they are.
    if (d.condicionadoGrupo != 0) return pagar(d.condicionadoGrupo);
    if (d.pagarOficial) return pagar(D);

    // Under the favourite condition the favourite cap takes the place of a band's cap.
    const bool favorito = d.favorito && r.topefavorito > 0;
    auto capBanda = [&](double cap) { return favorito ? r.topefavorito : cap; };

    double x = 0;
    int banda = 0;  // general band that gave X (1..5)
    if (r.divopc != 0) {
        x = topar(D + r.valor[1], capBanda(r.rango[10]));
    } else if (r.condicionado == 1) {
        DividendoGrupo g = pagar(d.montoCondicionado);
        g.porCondicionado = g.tipo == DividendoGrupo::Tipo::Pagar;
        return g;
    } else {
        bool cubierto = false;
        if (d.corredores >= 4 && d.corredores <= 7 && r.corredores[d.corredores].activa()) {
            const ReglaCorredores& c = r.corredores[d.corredores];
            if (c.vr2 == -1) {
                DividendoGrupo g;
                g.tipo = DividendoGrupo::Tipo::Devolver;
                return g;
            }
            cubierto = true;
            if (entre(D, c.r1, c.r2)) x = montoBanda(c.vr1, c.op1, D);
            else if (c.vr3 != 0 && entre(D, c.r5, c.r6)) x = montoBanda(c.vr3, c.op3, D);
            else if (c.vr4 != 0 && entre(D, c.r7, c.r8)) x = montoBanda(c.vr4, c.op4, D);
            else if ((c.vr2 != 0 || c.op2 != 0) && D != 0 && D >= c.r3)  // an open band with nothing set is none
                x = topar(c.op2 == 0 ? c.vr2 : bandaAbierta(D, c.vr2, r.mododiv), capBanda(c.r4));
            else cubierto = false;  // no band of the runner-count rule holds: the general bands decide
        }
        if (!cubierto) {
            for (int k = 1; k <= 4 && banda == 0; ++k)
                if (entre(D, r.rango[2 * k - 1], r.rango[2 * k])) {
                    banda = k;
                    x = montoBanda(r.valor[k], r.opcion[k], D);
                }
            if (banda == 0 && D != 0 && D >= r.rango[9]) {
                banda = 5;
                // Per two units: the caps are halved, the comparison made and the result doubled,
                // which is the same as capping the doubled amount.
                x = topar(bandaAbierta(D, r.valor[5], r.mododiv), capBanda(r.rango[10]));
            }
        }
    }
    if (x <= 0) return {};

    if (favorito && x > r.topefavorito) x = r.topefavorito;

    if (d.empate) {
        switch (static_cast<ModoEmpate>(r.empate)) {
        case ModoEmpate::LaMitad: x = x / 2; break;
        case ModoEmpate::General: break;
        case ModoEmpate::GeneralMinimo: {
            const double minimo = banda > 0 && r.empateBanda[banda] > 0 ? r.empateBanda[banda] : r.empatemin;
            x = std::max(x, minimo);
            break;
        }
        }
    }
    if (r.redondear != 0) x = std::floor(x + 0.5);
    return pagar(x);
}

const QStringList& columnasRegla() {
    static const QStringList columnas = [] {
        QStringList c;
        for (int i = 1; i <= 10; ++i) c << "rango" + QString::number(i);
        for (int i = 1; i <= 5; ++i) c << "valor_r" + QString::number(i);
        for (int i = 1; i <= 4; ++i) c << "opciondiv" + QString::number(i);
        c << "topefavorito" << "condicionado";
        for (int n = 4; n <= 7; ++n)
            for (const char* s : {"cabr1", "cabr2", "cabr3", "cabr4", "cabvr1", "cabvr2", "cabop1", "cabop2"})
                c << col(n, s);
        c << "empate" << "empatemin";
        for (int i = 1; i <= 5; ++i) c << "empate" + QString::number(i);
        c << "redondear";
        return c;
    }();
    return columnas;
}

const QStringList& columnasAmpliadas() {
    static const QStringList columnas = [] {
        QStringList c;
        for (int n = 5; n <= 7; ++n)
            for (const char* s : {"cabr5", "cabr6", "cabr7", "cabr8", "cabvr3", "cabvr4", "cabop3", "cabop4"})
                c << col(n, s);
        return c;
    }();
    return columnas;
}

bool columnaEntera(const QString& c) {
    return c.startsWith("opciondiv") || c.contains("cabop") || c == "condicionado" || c == "empate" ||
           c == "redondear" || c == "divopc" || c == "mododiv";
}

}  // namespace hipico
