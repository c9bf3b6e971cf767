#include "Library/Obj/SampleTexts.h"

#include <cmath>
#include <locale>
#include <sstream>

namespace quarn::test {

namespace {

constexpr int kColumns = 6;
constexpr int kRows = 4;

std::ostringstream newText() {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    return text;
}

void writePoints(std::ostream& text, const char* lineEnd) {
    for (int j = 0; j <= kRows; ++j) {
        for (int i = 0; i <= kColumns; ++i) {
            const double angle = 0.3 * (i - kColumns / 2);
            text << "v " << 5.0 * std::sin(angle) << " " << 5.0 * std::cos(angle) << " " << 0.25 * j
                 << lineEnd;
            text << "vt " << static_cast<double>(i) / kColumns << " " << 1.0 - static_cast<double>(j) / kRows
                 << lineEnd;
            text << "vn " << -std::sin(angle) << " " << -std::cos(angle) << " " << 0.0 << lineEnd;
        }
    }
}

int cornerNumber(int i, int j) {
    return j * (kColumns + 1) + i + 1;
}

std::string corner(int i, int j) {
    const std::string number = std::to_string(cornerNumber(i, j));
    return " " + number + "/" + number + "/" + number;
}

std::string sheetOfTriangles() {
    std::ostringstream text = newText();
    writePoints(text, "\n");
    for (int j = 0; j < kRows; ++j)
        for (int i = 0; i < kColumns; ++i)
            text << "f" << corner(i, j) << corner(i + 1, j) << corner(i + 1, j + 1) << "\nf" << corner(i, j)
                 << corner(i + 1, j + 1) << corner(i, j + 1) << "\n";
    return text.str();
}

std::string sheetOfQuads() {
    std::ostringstream text = newText();
    text << std::scientific;
    text.precision(3);
    text << "# a sheet\r\no sheet\r\n";
    writePoints(text, "\r\n");
    for (int j = 0; j < kRows; ++j)
        for (int i = 0; i + 1 < kColumns; ++i)
            text << "f" << corner(i, j) << corner(i + 1, j) << corner(i + 1, j + 1) << corner(i, j + 1)
                 << " \r\n";
    return text.str();
}

std::string modelWithEverything() {
    return "# made by hand\n"
           "mtllib model.mtl\n"
           "$ another comment\n"
           "o model\n"
           "g left right\n"
           "v 0 0 0 1.0 0.5 0.5\n"
           "v 1.000000 0.000000 -0.000000\n"
           "v 1 0 1e0\n"
           "v -0.5 0 \\\n0.5\n"
           "v 0 0 12345678901e-10\n"
           "v\t9 9 9\n"
           "vp 0.5\n"
           "vt 0 0 0\n"
           "vt 1 0\n"
           "vt 1 1.5\n"
           "vt 0\n"
           "vn 0 -1 0\n"
           "s 1\n"
           "usemtl cloth\n"
           "f 1/1/1 2/2/1 3/3/1 4/4/1 5/1/1\n"
           "f 1//1 2//1 \\\n 3//1\n"
           "  f 1/9/1 2/2/1 3/3/1 \r\n"
           "s off\n"
           "l 1 2\n"
           "f 1/1/1 2/2/1 9/3/1\n"
           "f -1 -2 -3\n"
           "fan 1 2 3 # too many\n";
}

}  // namespace

std::vector<std::string> sampleTexts() {
    return {sheetOfTriangles(), sheetOfQuads(), modelWithEverything()};
}

}  // namespace quarn::test
