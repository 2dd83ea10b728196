#include "benchmarks/ratio_table.h"

#include <QApplication>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return velmo::bench::RunRatios(argc, argv);
}
