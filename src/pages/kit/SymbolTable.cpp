#include "pages/kit/SymbolTable.h"

#include <array>

namespace quillbrook {

namespace {

constexpr std::array kSymbols = {
    SymbolDrawing{"antenna.radiowaves.left.and.right.slash",
        "s M 12 12 V 20.5 A 12 10 5 -45 90 A 12 10 5 135 90 A 12 10 8.8 -45 90 A 12 10 "
        "8.8 135 90|f O 12 10 2|x M 3.2 3.8 L 5.4 2.2 L 21.4 20.2 L 19.2 21.8 Z|s M 3.5 "
        "3 L 20 21.5"},
    SymbolDrawing{"app.badge", "s R 3.5 6.5 14 14 3.8|x O 18.5 5.5 4.6|f O 18.5 5.5 3.2"},
    SymbolDrawing{"app.badge.fill", "f R 2.6 5.6 15.8 15.8 4.2|x O 18.5 5.5 4.8|f O 18.5 5.5 3.4"},
    SymbolDrawing{"arrow.clockwise", "s A 12 13 7.5 30 -300 M 11.5 2.2 L 15 5.5 L 11.5 8.8"},
    SymbolDrawing{"arrow.left.arrow.right",
        "s M 4 8 H 20 M 16.5 4.5 L 20 8 L 16.5 11.5 M 20 16 H 4 M 7.5 12.5 L 4 16 L 7.5 "
        "19.5"},
    SymbolDrawing{"arrow.triangle.2.circlepath",
        "s A 12 12 8 160 -130 A 12 12 8 -20 -130 M 20.2 4.5 V 9 H 15.7 M 3.8 19.5 V 15 H "
        "8.3"},
    SymbolDrawing{"arrow.triangle.2.circlepath.circle.fill",
        "f O 12 12 10|c A 12 12 4.8 160 -130 A 12 12 4.8 -20 -130 M 17 7 V 10 H 14 M 7 "
        "17 V 14 H 10"},
    SymbolDrawing{"arrow.triangle.swap",
        "s M 7.5 20 V 4 M 3.5 8 L 7.5 4 L 11.5 8 M 16.5 4 V 20 M 12.5 16 L 16.5 20 L "
        "20.5 16"},
    SymbolDrawing{"arrow.up.right", "s M 6 18 L 18 6 M 8.5 6 H 18 V 15.5"},
    SymbolDrawing{"arrow.uturn.backward",
        "s M 9 5 L 4 10 L 9 15 M 4 10 H 14.5 A 14.5 14.5 4.5 90 -180 M 14.5 19 H 9"},
    SymbolDrawing{"bolt.fill", "f M 13.5 2 L 4.5 13.5 H 11 L 9.5 22 L 19.5 9.5 H 13 Z"},
    SymbolDrawing{"calendar", "s R 3.5 5 17 15.5 3 M 3.5 10 H 20.5 M 8 2.8 V 6.5 M 16 2.8 V 6.5"},
    SymbolDrawing{"calendar.badge.clock",
        "s R 3.5 5 17 15.5 3 M 3.5 10 H 20.5 M 8 2.8 V 6.5 M 16 2.8 V 6.5|x O 17.5 17.5 "
        "6.6|s O 17.5 17.5 4.6 M 17.5 15.2 V 17.6 H 19.4"},
    SymbolDrawing{"calendar.day.timeline.left",
        "s M 5 3 V 21|f O 5 7.5 2.4|s R 9.5 4.5 11.5 6 2 R 9.5 13.5 7.5 6 2"},
    SymbolDrawing{"chart.bar", "s R 4 12 4 8.5 1 R 10 7.5 4 13 1 R 16 3.5 4 17 1"},
    SymbolDrawing{"chart.bar.doc.horizontal",
        "s R 4.5 2.8 15 18.4 3 M 8.5 8 H 15.5 M 8.5 12 H 13 M 8.5 16 H 11"},
    SymbolDrawing{"checkmark", "s M 4.5 12.5 L 9.8 18 L 19.5 6.5"},
    SymbolDrawing{"checkmark.circle", "s O 12 12 9 M 7.8 12.3 L 10.8 15.5 L 16.2 8.8"},
    SymbolDrawing{"checkmark.circle.fill", "f O 12 12 10|c M 7.6 12.3 L 10.8 15.6 L 16.4 8.6"},
    SymbolDrawing{"checkmark.shield.fill",
        "f M 12 2 L 20 5 V 11.5 C 20 16.5 16.8 20.2 12 22 C 7.2 20.2 4 16.5 4 11.5 V 5 "
        "Z|c M 8.2 11.8 L 11 14.7 L 15.9 8.7"},
    SymbolDrawing{"chevron.down", "s M 5.5 9 L 12 15.5 L 18.5 9"},
    SymbolDrawing{"chevron.right", "s M 9 5.5 L 15.5 12 L 9 18.5"},
    SymbolDrawing{"circle", "s O 12 12 9"},
    SymbolDrawing{"clock.fill", "f O 12 12 10|c M 12 6.2 V 12.3 L 15.8 14.6"},
    SymbolDrawing{"cpu",
        "s R 6 6 12 12 2.5 M 9.5 2.8 V 6 M 14.5 2.8 V 6 M 9.5 18 V 21.2 M 14.5 18 V 21.2 "
        "M 2.8 9.5 H 6 M 2.8 14.5 H 6 M 18 9.5 H 21.2 M 18 14.5 H 21.2|f R 9.6 9.6 4.8 "
        "4.8 1"},
    SymbolDrawing{"display", "s R 2.8 4 18.4 12.5 2.5 M 12 16.5 V 20 M 8 20.2 H 16"},
    SymbolDrawing{"display.trianglebadge.exclamationmark",
        "s R 2.8 4 18.4 12.5 2.5 M 12 16.5 V 20 M 7 20.2 H 12|x M 17 9.2 L 24.5 22.8 H "
        "9.5 Z|f M 17 12 L 22.5 21.5 H 11.5 Z|c M 17 15.2 V 17.3"},
    SymbolDrawing{"doc.text.magnifyingglass",
        "s R 4 2.8 14 18.4 3 M 7.8 8 H 14.2 M 7.8 12 H 11|x O 16.2 15.7 5.6|s O 16.2 "
        "15.7 3.6 M 18.9 18.4 L 21.5 21"},
    SymbolDrawing{
        "exclamationmark.triangle", "s M 12 3.6 L 21.4 20 H 2.6 Z M 12 9.5 V 14 M 12 17 V 17.1"},
    SymbolDrawing{"exclamationmark.triangle.fill",
        "f M 12 3.6 L 21.4 20 H 2.6 Z|s M 12 3.6 L 21.4 20 H 2.6 Z|c M 12 9.5 V 14 M 12 "
        "17 V 17.1"},
    SymbolDrawing{"flame.fill",
        "f M 12.5 2 C 13 6 18.5 8.5 18.5 14.5 C 18.5 19 15.5 22 12 22 C 8.5 22 5.5 19 "
        "5.5 15 C 5.5 11.8 7.3 9.8 8.8 8 C 9.2 10 10 11 11 11.3 C 10.8 8 11 4.5 12.5 2 "
        "Z|x M 12 14.5 C 13.5 16 14.4 17 14.4 18.4 C 14.4 19.8 13.3 20.6 12 20.6 C 10.7 "
        "20.6 9.6 19.8 9.6 18.4 C 9.6 17 10.8 16 12 14.5 Z"},
    SymbolDrawing{"folder",
        "s M 3 7 C 3 5.5 3.8 4.8 5 4.8 H 9 L 11.3 7.3 H 19 C 20.3 7.3 21 8 21 9.3 V 17.5 "
        "C 21 18.8 20.3 19.5 19 19.5 H 5 C 3.8 19.5 3 18.8 3 17.5 Z"},
    SymbolDrawing{"gauge.with.dots.needle.33percent",
        "s A 12 13 9 -35 250 M 12 13 L 8.4 8.4|f O 12 13 2 O 15.8 9.4 1 O 7.2 14 1 O "
        "16.8 14 1"},
    SymbolDrawing{"gearshape.fill",
        "f O 12 12 7|s M 12 2.8 V 21.2 M 2.8 12 H 21.2 M 5.5 5.5 L 18.5 18.5 M 5.5 18.5 "
        "L 18.5 5.5|x O 12 12 3"},
    SymbolDrawing{"hand.point.up.braille",
        "s M 9 13.5 V 4.6 C 9 2.5 12 2.5 12 4.6 V 11 L 16.5 12.2 C 18 12.6 18.5 13.6 "
        "18.2 15 L 17.4 18.5 C 17 20.3 16 21 14.4 21 H 11 C 9.6 21 8.8 20.5 8 19.4 L 4.4 "
        "14.6 C 3.6 13.4 5.4 12 6.6 13 L 9 15|f O 16.6 3.6 1.2 O 20.4 3.6 1.2 O 16.6 7.6 "
        "1.2 O 20.4 7.6 1.2"},
    SymbolDrawing{"heart.circle",
        "s O 12 12 9.2|f M 12 16.8 C 8.4 14.3 7.3 12.5 7.3 10.8 C 7.3 9.3 8.4 8.3 9.7 "
        "8.3 C 10.7 8.3 11.6 8.9 12 9.8 C 12.4 8.9 13.3 8.3 14.3 8.3 C 15.6 8.3 16.7 9.3 "
        "16.7 10.8 C 16.7 12.5 15.6 14.3 12 16.8 Z"},
    SymbolDrawing{"heart.fill",
        "f M 12 20.5 C 5 15.5 3 12 3 8.8 C 3 6 5.1 4 7.6 4 C 9.5 4 11.2 5.1 12 6.9 C "
        "12.8 5.1 14.5 4 16.4 4 C 18.9 4 21 6 21 8.8 C 21 12 19 15.5 12 20.5 Z"},
    SymbolDrawing{"info.circle", "s O 12 12 9 M 12 11 V 16.6|f O 12 7.6 1.2"},
    SymbolDrawing{"info.circle.fill", "f O 12 12 10|c M 12 11 V 16.8|x O 12 7.4 1.3"},
    SymbolDrawing{"keyboard",
        "s R 2.5 5.5 19 13 2.8 M 6.6 9.4 V 9.5 M 10.2 9.4 V 9.5 M 13.8 9.4 V 9.5 M 17.4 "
        "9.4 V 9.5 M 8.4 14.8 H 15.6"},
    SymbolDrawing{"lock.shield.fill",
        "f M 12 2 L 20 5 V 11.5 C 20 16.5 16.8 20.2 12 22 C 7.2 20.2 4 16.5 4 11.5 V 5 "
        "Z|x R 8.3 11 7.4 5.8 1.2|c M 9.8 11 V 9.3 C 9.8 6.4 14.2 6.4 14.2 9.3 V 11"},
    SymbolDrawing{"magnifyingglass", "s O 10.5 10.5 6.7 M 15.5 15.5 L 20.8 20.8"},
    SymbolDrawing{"memorychip",
        "s R 3 7 18 10 2 M 7 17 V 20.2 M 12 17 V 20.2 M 17 17 V 20.2 M 7 3.8 V 7 M 12 "
        "3.8 V 7 M 17 3.8 V 7|f R 6.5 10.3 4 3.4 0.6 R 13.5 10.3 4 3.4 0.6"},
    SymbolDrawing{"moon.zzz",
        "s M 20 14.5 C 14 17.5 6.5 13.5 9 4 C 5.5 5.4 3 8.6 3 12.4 C 3 17.5 7 21 11.8 21 "
        "C 15.5 21 18.8 18.5 20 14.5 Z M 14 4 H 17.5 L 14 8.3 H 17.5 M 18.5 9.5 H 21 L "
        "18.5 12.6 H 21"},
    SymbolDrawing{"moon.zzz.fill",
        "f M 20 14.5 C 14 17.5 6.5 13.5 9 4 C 5.5 5.4 3 8.6 3 12.4 C 3 17.5 7 21 11.8 21 "
        "C 15.5 21 18.8 18.5 20 14.5 Z|s M 14 4 H 17.5 L 14 8.3 H 17.5 M 18.5 9.5 H 21 L "
        "18.5 12.6 H 21"},
    SymbolDrawing{"person.crop.circle.fill",
        "f O 12 12 10|x O 12 9.3 3.4|x M 5.5 19 C 6.6 15.9 9 14.3 12 14.3 C 15 14.3 17.4 "
        "15.9 18.5 19 C 16.8 20.2 14.5 20.8 12 20.8 C 9.5 20.8 7.2 20.2 5.5 19 Z"},
    SymbolDrawing{"person.fill",
        "f O 12 7.5 4.4|f M 3.5 21 C 3.5 16.5 7 13.6 12 13.6 C 17 13.6 20.5 16.5 20.5 21 "
        "Z"},
    SymbolDrawing{"power", "s M 12 2.8 V 11.5 A 12 13 8 55 -290"},
    SymbolDrawing{
        "scope", "s O 12 12 7 M 12 1.8 V 7.5 M 12 16.5 V 22.2 M 1.8 12 H 7.5 M 16.5 12 H 22.2"},
    SymbolDrawing{"shield.lefthalf.filled.badge.checkmark",
        "s M 12 2 L 20 5 V 11.5 C 20 16.5 16.8 20.2 12 22 C 7.2 20.2 4 16.5 4 11.5 V 5 "
        "Z|f M 12 2 L 4 5 V 11.5 C 4 16.5 7.2 20.2 12 22 Z|x O 18 17.5 6|f O 18 17.5 "
        "4.8|c M 15.8 17.6 L 17.5 19.3 L 20.3 15.8"},
    SymbolDrawing{"square.and.arrow.up",
        "s M 8 9 H 5.5 V 20.8 H 18.5 V 9 H 16 M 12 14.5 V 2.8 M 8.2 6.4 L 12 2.6 L 15.8 "
        "6.4"},
    SymbolDrawing{"star.fill",
        "f M 12 2 L 15 8.6 L 22 9.3 L 16.7 14 L 18.2 21 L 12 17.4 L 5.8 21 L 7.3 14 L 2 "
        "9.3 L 9 8.6 Z"},
    SymbolDrawing{"tag",
        "s M 3 4.5 C 3 3.6 3.6 3 4.5 3 H 11.2 C 11.8 3 12.2 3.2 12.6 3.6 L 20.6 11.6 C "
        "21.4 12.4 21.4 13.2 20.6 14 L 14 20.6 C 13.2 21.4 12.4 21.4 11.6 20.6 L 3.6 "
        "12.6 C 3.2 12.2 3 11.8 3 11.2 Z|f O 7.8 7.8 1.6"},
    SymbolDrawing{"text.word.spacing",
        "s M 3 5 V 19 M 21 5 V 19 M 7.5 12 H 16.5 M 10 9.3 L 7.3 12 L 10 14.7 M 14 9.3 L "
        "16.7 12 L 14 14.7"},
    SymbolDrawing{
        "xmark.circle.fill", "f O 12 12 10|c M 8.4 8.4 L 15.6 15.6 M 15.6 8.4 L 8.4 15.6"},
};

} // namespace

std::span<const SymbolDrawing> symbolTable()
{
    return kSymbols;
}

} // namespace quillbrook
