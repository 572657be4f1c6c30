// Which renderers a pool lends again, and which it loads anew: seen by a mark on the renderer itself.
#include "image/RendererPool.h"

#include <QPainter>
#include <chrono>
#include <filesystem>
#include <thread>

#include "svg/GuiApplication.h"
#include "tests/image/GuardedDocuments.h"
#include "tests/image/ImageFixture.h"

using namespace tzsvg;

namespace {

const QByteArray kLinked = "<image width='9' height='9' xlink:href='photo.png'/>";
const QByteArray kAnimated =
    "<rect width='9' height='9'><animateColor attributeName='fill' from='#ff0000' to='#0000ff' begin='0s' "
    "dur='0.2s' fill='freeze'/></rect>";

struct RendererPoolTest : ImageTest {
    RendererPoolTest() { ensureGuiApplication(); }

    // A file besides the document, changed a minute ago.
    void writePhoto(QRgb colour, int age = 60) const {
        const QString photo = folder.filePath(QStringLiteral("photo.png"));
        QImage pixels(2, 2, QImage::Format_ARGB32);
        pixels.fill(colour);
        pixels.save(photo);
        QFile file(photo);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.setFileTime(QDateTime::currentDateTime().addSecs(-age), QFileDevice::FileModificationTime);
    }

    // Whether the renderer that is lent now was lent before.
    bool lendsAgain() {
        const RendererPool::Lease lease = pool.lend();
        document = lease.document();
        const bool again = lease.renderer()->objectName() == QLatin1String("lent");
        lease.renderer()->setObjectName(QStringLiteral("lent"));
        return again;
    }

    RendererPool pool{path(), CTzUser_ThreadService(host.service<ITzThreadService>()).createMutex()};
    uint64_t document = 0;  // of the last one lent
};

}  // namespace

TEST_F(RendererPoolTest, keepsWhatStaysAsItIs) {
    const struct {
        const char* name;
        QByteArray content;
        int age, photoAge;
        bool kept;
    } rows[] = {
        {"plain", "<rect width='9' height='9'/>", 60, 60, true},
        {"with a picture", kLinked, 60, 60, true},
        {"animated", kAnimated, 60, 60, false},
        {"may still change unnoticed", "<rect/>", -60, 60, false},
        {"its picture may", kLinked, 60, -60, false},
    };
    for (const auto& row : rows) {
        write(svg(row.content), row.age);
        writePhoto(0xFFFF0000, row.photoAge);
        lendsAgain();
        const uint64_t before = document;
        EXPECT_EQ(lendsAgain(), row.kept) << row.name;
        EXPECT_EQ(document, before) << row.name;
    }
}

// Two at once are two renderers, and both are kept.
TEST_F(RendererPoolTest, lendsToSeveralAtOnce) {
    write(svg("<rect width='9' height='9'/>"));
    {
        const RendererPool::Lease outer = pool.lend();
        outer.renderer()->setObjectName(QStringLiteral("lent"));
        EXPECT_FALSE(lendsAgain());
    }
    const RendererPool::Lease one = pool.lend();
    EXPECT_EQ(one.renderer()->objectName(), QStringLiteral("lent"));
    EXPECT_TRUE(lendsAgain());
}

TEST_F(RendererPoolTest, noticesAChangedPicture) {
    write(svg(kLinked));
    writePhoto(0xFFFF0000);
    lendsAgain();
    const uint64_t before = document;
    writePhoto(0xFF0000FF, 50);
    EXPECT_FALSE(lendsAgain());
    EXPECT_NE(document, before) << "tiles drawn with the old picture are stale";
    EXPECT_TRUE(lendsAgain());
    QFile::remove(folder.filePath(QStringLiteral("photo.png")));
    EXPECT_FALSE(lendsAgain());
}

// As large as the one before, and as old.
TEST_F(RendererPoolTest, noticesAnotherFileInItsPlace) {
    write(svg("<rect width='9' height='9'/>"));
    lendsAgain();
    const std::filesystem::path file = path().toStdString();
    const std::filesystem::path other = file.native() + ".new";
    std::filesystem::copy_file(file, other);
    std::filesystem::last_write_time(other, std::filesystem::last_write_time(file));
    std::filesystem::rename(other, file);
    EXPECT_FALSE(lendsAgain());
}

// The look at its dashes must not have started it.
TEST_F(RendererPoolTest, animationsStartWithTheirFirstPicture) {
    write(svg(kAnimated));
    const RendererPool::Lease lease = pool.lend();
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    QImage image(9, 9, QImage::Format_ARGB32);
    QPainter painter(&image);
    lease.renderer()->render(&painter);
    painter.end();
    EXPECT_GT(qRed(image.pixel(4, 4)), qBlue(image.pixel(4, 4)));
}
