#include <gtest/gtest.h>
#include <QApplication>

#include <clocale>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    QApplication::setStyle("Fusion");
    std::setlocale(LC_NUMERIC, "C");
    const int result = RUN_ALL_TESTS();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return result;
}
