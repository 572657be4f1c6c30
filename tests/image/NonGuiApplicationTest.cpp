// A program of its own: here the process has a Qt application that has no GUI.
#include <gtest/gtest.h>

#include <QCoreApplication>

#include "image/CSVGImageLoader.h"
#include "tests/image/ImageHost.h"

TEST(NonGuiApplication, documentsAreRefused) {
    char name[] = "test";
    char* arguments[] = {name, nullptr};
    int count = 1;
    const QCoreApplication application(count, arguments);

    const ImageHost host;
    const auto loader = CTzPolymorph<tzsvg::CSVGImageLoader, ITzImageLoader>::create(host.object());
    TzLoadAccess access{};
    access.fileName = tzText("drawing.svg");
    EXPECT_EQ(loader->recognise(&access), kTzNotSupported);
    EXPECT_EQ(host.lines(), std::vector<std::string>{
                                "io-status|load/save|No GUI application to draw svg documents with.\n"});
    ITzImage* image = nullptr;
    EXPECT_EQ(loader->load(&access, &image), kTzNotSupported);
    EXPECT_EQ(image, nullptr);
}
