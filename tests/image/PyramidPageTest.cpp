// The page of a pyramid in headless Chromium: what it shows after what a user does, block by block.
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <cstdlib>

#include "tests/common/ProgramRun.h"

namespace {

constexpr int kBlock = 20;
const QColor kQuarters[] = {QColor(200, 0, 0), QColor(0, 160, 0), QColor(0, 0, 200), QColor(220, 200, 0)};

QColor average(const QImage& image, const QRect& block) {
    int sum[3] = {};
    for (int x = block.left(); x <= block.right(); ++x) {
        for (int y = block.top(); y <= block.bottom(); ++y) {
            const QRgb pixel = image.pixel(x, y);
            sum[0] += qRed(pixel);
            sum[1] += qGreen(pixel);
            sum[2] += qBlue(pixel);
        }
    }
    const int count = block.width() * block.height();
    return {sum[0] / count, sum[1] / count, sum[2] / count};
}

bool alike(const QColor& one, const QColor& other) {
    return std::abs(one.red() - other.red()) + std::abs(one.green() - other.green()) +
               std::abs(one.blue() - other.blue()) <
           48;
}

// What the page is to show: a drawing of four quarters there, on a desk of that colour.
QImage expected(const QSize& window, const QRectF& drawing, const QColor& desk) {
    QImage image(window, QImage::Format_RGB32);
    image.fill(desk);
    QPainter painter(&image);
    for (int i = 0; i < 4; ++i) {
        const QPoint place(i % 2, i / 2);
        const QPointF corner(drawing.x() + place.x() * drawing.width() / 2,
                             drawing.y() + place.y() * drawing.height() / 2);
        painter.fillRect(QRectF(corner, drawing.size() / 2), kQuarters[i]);
    }
    return image;
}

class PyramidPage : public ::testing::Test {
  protected:
    void SetUp() override {
        if (std::system("command -v chromium >/dev/null") != 0) GTEST_SKIP() << "no chromium";
        std::string drawing = "<svg xmlns='http://www.w3.org/2000/svg' width='400' height='200'>";
        for (int i = 0; i < 4; ++i) {
            drawing += "<rect x='" + std::to_string(i % 2 * 200) + "' y='" + std::to_string(i / 2 * 100) +
                       "' width='200' height='100' fill='" + kQuarters[i].name().toStdString() + "'/>";
        }
        folder_.write("quarters.svg", drawing + "</svg>");
        ASSERT_EQ(tzhost::runProgram(folder_, "pyramid quarters.svg . --max-level 10"), 0);
    }

    // The page as it is after a script. It stands in a frame, for the window gets its size last of all.
    QImage show(const QSize& window, const std::string& script, const std::string& options = {}) {
        folder_.write("shown.html",
                      folder_.read("index.html") +
                          "<script>view.setPointerCapture = () => {};\n"
                          "const press = (key, times = 1) => { while (times-- > 0) "
                          "window.dispatchEvent(new KeyboardEvent('keydown', {key})); };\n"
                          "const finger = (type, pointerId, clientX, clientY) => view.dispatchEvent("
                          "new PointerEvent(type, {pointerId, clientX, clientY}));\n" +
                          script + "</script>");
        const std::string width = std::to_string(window.width());
        const std::string height = std::to_string(window.height());
        folder_.write("frame.html",
                      "<body style='margin: 0'><iframe src='shown.html' style='border: 0' width='" + width +
                          "' height='" + height + "'></iframe>");
        browse("frame.html", "--window-size=" + width + "," + height + " --screenshot=shown.png " + options);
        return QImage(QString::fromStdString((folder_ / "shown.png").native()))
            .convertToFormat(QImage::Format_RGB32);
    }

    // What Chromium prints is left in "out".
    void browse(const std::string& page, const std::string& options) {
        const std::string command = "cd " + (folder_ / "").native() +
                                    " && chromium --headless --no-sandbox --disable-gpu --hide-scrollbars "
                                    "--force-device-scale-factor=1"
                                    " --virtual-time-budget=10000 --user-data-dir=$PWD/chromium " +
                                    options + " file://$PWD/" + page + " >out 2>err";
        EXPECT_EQ(std::system(command.c_str()), 0) << folder_.read("err");
    }

    TestFolder folder_;
};

TEST_F(PyramidPage, showsTheDrawingWhereItIs) {
    const QColor light("#d8dbdf");
    const QColor dark("#22262b");
    const std::string darkly = "--blink-settings=preferredColorScheme=0";
    const QSize wide(800, 600);
    const QRectF fitted(16, 116, 768, 384);  // between tools and foot
    // About the middle of the window.
    const auto zoomed = [&](double factor) {
        return QRectF(400 - (400 - fitted.x()) * factor, 300 - (300 - fitted.y()) * factor, 768 * factor,
                      384 * factor);
    };
    const struct {
        const char* what;
        QSize window;
        QRectF drawing;
        std::string script;
        bool isDark;
    } rows[] = {
        {"all of it", wide, fitted, "", false},
        {"in the dark", wide, fitted, "", true},
        {"in a narrow window", {360, 640}, {7, 242, 346, 173}, "", false},
        {"moved to the right as far as it goes", wide,
         QRectF(QPointF(0, zoomed(2.25).y()), zoomed(2.25).size()), "press('+', 2); press('ArrowLeft', 99);",
         false},
        {"moved up as far as it goes", wide,
         QRectF(QPointF(zoomed(2.25).x(), 564 - 864), zoomed(2.25).size()),
         "element('in').click(); element('in').click(); press('ArrowDown', 99);", true},
        {"zoomed out, and moved", wide, fitted, "press('-', 9); press('ArrowUp', 9);", false},
        {"moved, and all of it again", wide, fitted,
         "press('+', 4); press('ArrowUp', 9); press('?'); press('Escape'); element('fit').click();", false},
        {"pinched and dragged", wide, zoomed(3).translated(-100, 50),
         "press('+'); finger('pointerdown', 1, 350, 300); finger('pointerdown', 2, 450, 300);"
         "finger('pointermove', 1, 300, 300); finger('pointermove', 2, 500, 300); finger('pointerup', 1, 0, "
         "0);"
         "finger('pointermove', 2, 400, 350); finger('pointerup', 2, 0, 0);",
         false},
    };
    for (const auto& row : rows) {
        const QImage shown = show(row.window, row.script, row.isDark ? darkly : "");
        const QImage wanted = expected(row.window, row.drawing, row.isDark ? dark : light);
        ASSERT_EQ(shown.size(), wanted.size()) << row.what;
        int wrong = 0;
        // Tools and foot lie over the first and the last rows.
        for (int y = 3 * kBlock; y + 3 * kBlock <= shown.height(); y += kBlock) {
            for (int x = 0; x + kBlock <= shown.width(); x += kBlock) {
                const QRect block(x, y, kBlock, kBlock);
                if (!alike(average(shown, block), average(wanted, block))) ++wrong;
            }
        }
        EXPECT_EQ(wrong, 0) << row.what;
        // The tools stand out from the desk.
        const QRect tools(row.window.width() - 160, 12, 150, 40);
        EXPECT_FALSE(alike(average(shown, tools), row.isDark ? Qt::white : Qt::black)) << row.what;
    }
}

TEST_F(PyramidPage, saysWhatIsMissingAndWhereTheFocusIs) {
    std::filesystem::remove(folder_ / "pyramid_files/10/0_0.png");
    std::filesystem::remove(folder_ / "pyramid_files/10/3_1.png");
    const QImage shown = show({800, 600}, "window.focus(); view.focus(); press('?');");
    browse("shown.html", "--dump-dom");
    EXPECT_NE(folder_.read("out").find(">2 tiles are missing here.</p>"), std::string::npos);
    EXPECT_NE(folder_.read("out").find("aria-expanded=\"true\""), std::string::npos);
    EXPECT_NE(folder_.read("out").find("class=\"panel\">\n  <table>"), std::string::npos)
        << "the keys are hidden";
    // Striped, light red; beside it the first quarter.
    const QColor stripes = average(shown, {40, 140, 140, 140});
    EXPECT_GT(stripes.red(), 220);
    EXPECT_GT(stripes.green(), 190);
    EXPECT_LT(stripes.green(), stripes.red());
    EXPECT_TRUE(alike(average(shown, {220, 140, 40, 40}), kQuarters[0]));
    EXPECT_TRUE(alike(shown.pixelColor(1, 300), QColor("#0a58ca"))) << "no ring around what has the focus";
    // The drawing's edge is darker than desk and drawing.
    const auto brightness = [&](int y) { return qGray(shown.pixel(300, y)); };
    EXPECT_LT(brightness(115), brightness(100) - 60);
}

}  // namespace
