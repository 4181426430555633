#include "graphs/rtf/MetaFile.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <limits>
#include <stdexcept>
#include <thread>

#include "platform/files/CFileException.h"
#include "platform/files/CMemFile.h"
#include "platform/graphics/RecordingDevice.h"
#include "tests/platform/files/TemporaryFolder.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/HostServicesScope.h"
#include "tests/support/OddNumbers.h"

namespace {

using tessalink::test::cInfinity;
using tessalink::test::cNaN;

void draw(CDC& dc) {
    dc.Rectangle(10, 10, 100, 60);
    for (int i = 0; i < 200; ++i) dc.TextOut(20, 5 * i, "scores of several scales");
}

std::string bytesOf(const MetaFile& picture) {
    const auto bytes = tessalink::bytesOf(picture.GetHandle());
    return {bytes.begin(), bytes.end()};
}

RECT edges(const decltype(ENHMETAHEADER::rclFrame)& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

ENHMETAHEADER headerOf(tessalink::HENHMETAFILE picture) {
    ENHMETAHEADER header{};
    GetEnhMetaFileHeader(picture, sizeof(header), &header);
    return header;
}

// Two digits for each byte, the slow way.
std::string digitsOf(const std::string& bytes) {
    std::string digits;
    for (const char ch : bytes) {
        for (const int half : {ch >> 4 & 0xF, ch & 0xF}) digits += "0123456789ABCDEF"[half];
    }
    return digits;
}

TEST(MetaFile, GoesFromEmptyOverRecordingToAPicture) {
    MetaFile file;
    EXPECT_EQ(file.IsOpen(), 0);
    EXPECT_EQ(file.GetHandle(), nullptr);
    EXPECT_NE(file.Create(nullptr), 0);
    EXPECT_NE(file.IsOpen(), 0);
    EXPECT_EQ(file.GetHandle(), nullptr);
    draw(file);
    file.Close();
    EXPECT_EQ(file.IsOpen(), 0);
    const tessalink::HENHMETAFILE first = file.GetHandle();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(file.Rectangle(0, 0, 9, 9), 0);
    file.Close();
    EXPECT_EQ(file.GetHandle(), first);

    EXPECT_NE(file.Create(1, 1, nullptr), 0);
    EXPECT_EQ(file.GetHandle(), nullptr);
    draw(file);
    const tessalink::HENHMETAFILE detached = file.Detach();
    ASSERT_NE(detached, nullptr);
    EXPECT_EQ(headerOf(detached).rclBounds.left, 10);
    EXPECT_EQ(file.IsOpen(), 0);
    EXPECT_EQ(file.GetHandle(), nullptr);
    EXPECT_EQ(file.Detach(), nullptr);
    EXPECT_NE(DeleteEnhMetaFile(detached), 0);
    EXPECT_STREQ(file.GetRuntimeClass()->m_lpszClassName, "MetaFile");

    MetaFile open(1, 1, nullptr);
    EXPECT_NE(open.IsOpen(), 0);
    open.Clear();
    EXPECT_EQ(open.IsOpen(), 0);
    EXPECT_EQ(open.GetHandle(), nullptr);
}

// The frame and the RTF sizes for sizes in inches of every kind.
TEST(MetaFile, HasExactlyTheSizesThatAreAskedFor) {
    struct Case {
        double width, height;
        RECT frame{};
        const char* sizes;
    };
    const Case cases[] = {
        {2.5, 1, {0, 0, 6350, 2540}, "\\picw6350\\pich2540\\picwgoal3600\\pichgoal1440"},
        {0.0001, 0.0002, {0, 0, 0, 1}, "\\picw0\\pich1\\picwgoal0\\pichgoal0"},
        {0, -1, {0, 0, 0, -2539}, "\\picw0\\pich4294964757\\picwgoal0\\pichgoal4294965857"},
        {cNaN,
         cInfinity,
         {0, 0, 0, INT_MAX},
         "\\picw0\\pich2147483647\\picwgoal0\\pichgoal2147483647"},
        {1e300,
         -cInfinity,
         {0, 0, INT_MAX, INT_MIN},
         "\\picw2147483647\\pich2147483648\\picwgoal2147483647\\pichgoal2147483648"},
    };
    for (const Case& c : cases) {
        MetaFile file;
        ASSERT_NE(file.Create(c.width, c.height, nullptr), 0);
        draw(file);
        file.Close();
        ASSERT_NE(file.GetHandle(), nullptr);
        EXPECT_EQ(edges(headerOf(file.GetHandle()).rclFrame), c.frame);
        const std::string expected = std::string("{\\*\\shppict{\\pict\\emfblip") + c.sizes +
                                     "\\sspicalign0 \r\n" + digitsOf(bytesOf(file)) + "}}";
        EXPECT_EQ(file.GetAsRTF(c.width, c.height).GetString(), expected);
        CMemFile text;
        file.SaveAsRTF(text, c.width, c.height);
        std::string saved(text.GetLength(), '\0');
        text.SeekToBegin();
        text.Read(saved.data(), saved.size());
        EXPECT_EQ(saved, expected);
        MetaFile empty;
        EXPECT_EQ(empty.GetAsRTF(c.width, c.height).GetString(),
                  expected.substr(0, expected.find('\n') + 1) + "}}");
        RECT rect = {0, 0, 500, 500};
        CRect target(rect);
        tessalink::RecordingDevice device;
        CDC dc(device);
        file.Play(dc, target);
        // The rectangle, and the texts with their backgrounds unless those have no extent.
        EXPECT_GE(device.Primitives().size(), 200u);
    }
}

TEST(MetaFile, WritesDigitsOfEveryByte) {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        std::string digits(2 * size, '?');
        const std::string part = bytes.substr(bytes.size() - size);
        tessalink::writeHexDigits(reinterpret_cast<const BYTE*>(part.data()), size, digits.data());
        ASSERT_EQ(digits, digitsOf(part));
    }
}

TEST(MetaFile, SavedLoadedAndSavedIsTheSameFile) {
    const TemporaryFolder folder;
    MetaFile file(3, 2, folder.Path("closed").c_str());
    draw(file);
    EXPECT_EQ(file.Save(folder.Path("early").c_str()), 0);
    file.Close();
    ASSERT_NE(file.Save(folder.Path("first").c_str()), 0);
    MetaFile loaded(folder.Path("first").c_str());
    ASSERT_NE(loaded.GetHandle(), nullptr);
    ASSERT_NE(loaded.Save(folder.Path("second").c_str()), 0);
    EXPECT_EQ(folder.Read("first"), bytesOf(file));
    EXPECT_EQ(folder.Read("second"), bytesOf(file));
    EXPECT_EQ(folder.Read("closed"), bytesOf(file));
    CByteArray bytes;
    loaded.GetBytes(bytes);
    EXPECT_EQ(std::string(bytes.GetData(), bytes.GetData() + bytes.GetSize()), bytesOf(file));

    EXPECT_EQ(loaded.Load(folder.Path("missing").c_str()), 0);
    EXPECT_EQ(loaded.GetHandle(), nullptr);
    loaded.GetBytes(bytes);
    EXPECT_EQ(static_cast<std::size_t>(bytes.GetSize()), bytesOf(file).size());
    EXPECT_EQ(loaded.Load(folder.Write("damaged", folder.Read("first") + "xxxx").c_str()), 0);
    EXPECT_EQ(loaded.Load(nullptr), 0);
    EXPECT_EQ(loaded.Save(folder.Path("none").c_str()), 0);
    EXPECT_EQ(file.Save(nullptr), 0);
    EXPECT_EQ(loaded.Create(folder.Path("no/such").c_str()), 0);
    EXPECT_EQ(loaded.IsOpen(), 0);
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"closed", "damaged", "first", "second"}));
}

// Wherever the disk becomes full: no short file under the name, and the results say so.
TEST(MetaFile, LeavesNoShortFileOnAFullDisk) {
    const TemporaryFolder folder;
    const std::string name = folder.Write("out", "old");
    MetaFile file(nullptr);
    file.Create(nullptr);
    draw(file);
    file.Close();
    const std::size_t size = bytesOf(file).size();
    for (std::size_t limit = 0; limit < size; limit += size / 37) {
        const tessalink::test::FileSizeLimit fullDisk(limit);
        EXPECT_EQ(file.Save(name.c_str()), 0) << limit;
        MetaFile named(name.c_str());
        named.Create(name.c_str());
        draw(named);
        named.Close();
        EXPECT_EQ(named.GetHandle(), nullptr) << limit;
    }
    EXPECT_EQ(folder.Read("out"), "old");
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"out"});
    EXPECT_NE(file.Save(name.c_str()), 0);
    EXPECT_EQ(folder.Read("out").size(), size);
}

// A file that fails at one write.
class FailingFile : public CMemFile {
public:
    explicit FailingFile(int failing) : m_left(failing) {}
    void Write(const void* buffer, std::size_t count) override {
        if (--m_left == 0) throw CFileException(CFileException::diskFull);
        CMemFile::Write(buffer, count);
    }
    bool HasFailed() const { return m_left <= 0; }

private:
    int m_left;
};

TEST(MetaFile, PassesFaultsOfTheReportOn) {
    MetaFile file(nullptr);
    file.Create(nullptr);
    for (int i = 0; i < 10; ++i) draw(file);
    file.Close();
    int writes = 0;
    for (bool failed = true; failed;) {
        FailingFile report(++writes);
        if (writes > 100) break;
        try {
            file.SaveAsRTF(report, 1, 1);
        } catch (const CFileException& error) {
            EXPECT_EQ(error.m_cause, CFileException::diskFull);
        }
        failed = report.HasFailed();
    }
    EXPECT_GT(writes, 3);
    EXPECT_LT(writes, 100);
}

// The default printer of the host measures the picture, and each recording asks for it anew.
TEST(MetaFile, IsMeasuredByTheDefaultPrinter) {
    constexpr tessalink::DeviceCaps printer = {600, 300, 4800, 3300, 203, 279, true};
    int asked = 0;
    tessalink::HostServices services;
    services.defaultPrinter = [&]() -> std::shared_ptr<tessalink::DrawingDevice> {
        ++asked;
        return std::make_shared<tessalink::NullDevice>(printer);
    };
    const tessalink::test::HostServicesScope scope(services);
    MetaFile file(1, 1, nullptr);
    EXPECT_EQ(file.GetDeviceCaps(LOGPIXELSX), 600);
    EXPECT_EQ(file.GetDeviceCaps(TECHNOLOGY), DT_RASPRINTER);
    file.SelectStockObject(DEFAULT_GUI_FONT);
    const CSize extent = file.GetTextExtent("iiiiiiiiiiiiiiiiiiii");
    EXPECT_EQ(extent.cy, 12);
    EXPECT_EQ(extent.cx, 98);
    file.Close();
    const ENHMETAHEADER header = headerOf(file.GetHandle());
    EXPECT_EQ(header.szlDevice, (SIZE{4800, 3300}));
    EXPECT_EQ(header.szlMillimeters, (SIZE{203, 279}));
    EXPECT_EQ(asked, 1);
    file.Create(nullptr);
    EXPECT_EQ(asked, 2);
}

// A printer that can't be opened is none, one without a size measures nothing, and none is held
// longer than a recording.
TEST(MetaFile, DoesWithoutAPrinterThatFails) {
    using Device = std::shared_ptr<tessalink::DrawingDevice>;
    const auto record = [](const std::function<Device()>& printer) {
        tessalink::HostServices services;
        services.defaultPrinter = printer;
        const tessalink::test::HostServicesScope scope(services);
        MetaFile file(nullptr);
        const int created = file.Create(1, 1, nullptr);
        EXPECT_EQ(created, file.IsOpen());
        file.Close();
        return file.GetHandle() != nullptr ? headerOf(file.GetHandle()).szlDevice.cx : 0;
    };
    EXPECT_EQ(record([]() -> Device { throw std::runtime_error("offline"); }), 1920);
    EXPECT_EQ(record([]() -> Device { return nullptr; }), 1920);
    for (const tessalink::DeviceCaps& caps :
         {tessalink::DeviceCaps{600, 600, 0, 3300, 203, 279, true},
          {600, 600, 4800, 3300, 203, -1, true},
          {600, 0, 4800, 3300, 203, 279, true}}) {
        EXPECT_EQ(record([&] { return std::make_shared<tessalink::NullDevice>(caps); }), 0);
    }
    const auto device = std::make_shared<tessalink::NullDevice>();
    tessalink::HostServices services;
    services.defaultPrinter = [device] { return device; };
    const tessalink::test::HostServicesScope scope(services);
    const auto held = device.use_count();
    MetaFile file("missing");
    EXPECT_EQ(file.Create("no/such/folder"), 0);
    EXPECT_EQ(device.use_count(), held);
    file.Create(nullptr);
    EXPECT_GT(device.use_count(), held);
    file.Close();
    EXPECT_EQ(device.use_count(), held);
}

TEST(MetaFile, KeepsThePictureThatIsAttachedAgain) {
    MetaFile file(1, 1, nullptr);
    draw(file);
    file.Close();
    const std::string bytes = bytesOf(file);
    file.Attach(file.GetHandle());
    EXPECT_EQ(bytesOf(file), bytes);
}

// Pictures are recorded side by side; only the printer is asked for by one thread at a time.
TEST(MetaFile, RecordsInSeveralThreads) {
    std::string results[4];
    {
        std::vector<std::jthread> threads;
        for (std::string& result : results) {
            threads.emplace_back([&result] {
                MetaFile file(1, 1, nullptr);
                draw(file);
                file.Close();
                result = bytesOf(file);
            });
        }
    }
    for (const std::string& result : results) EXPECT_EQ(result, results[0]);
    EXPECT_FALSE(results[0].empty());
}

}  // namespace
