// A sound file of cases with some of its bytes changed: the input is a list of places (three bytes)
// and bytes. Whatever it says, it is read or refused with a message; what may be written in is
// sound, and a change in it is kept.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "apps/desk/casestore/CaseStore.h"
#include "apps/desk/session/CaseSession.h"
#include "fuzz/detail/SmallQuestionnaire.h"
#include "fuzz/detail/require.h"

namespace {

using namespace tessalink::desk;
using tessalink::fuzz::require;
using tessalink::fuzz::smallQuestionnaire;

CaseStoreOptions options() {
    CaseStoreOptions given;
    given.account = "fuzz";
    given.isOnShare = false;
    return given;
}

/// A folder with the file that is opened, removed at the end.
class Place {
public:
    Place()
        : m_folder(std::filesystem::temp_directory_path() /
                   ("tessalink-case-fuzz-" + std::to_string(std::random_device()()))) {
        std::filesystem::create_directory(m_folder);
        {
            CaseStore store = CaseStore::Create(Path(), options());
            for (const char* const label : {"one", "two", "three"}) {
                const CaseId id = store.AddCase(smallQuestionnaire(), label);
                store.SetEntry(id, {EntryKind::Answer, "Q1"}, "1");
                store.SetEntry(id, {EntryKind::Field, "Name"}, std::string(50, 'n'));
            }
            store.Delete(2);
        }
        std::ifstream file(Path(), std::ios::binary);
        m_sound.assign(std::istreambuf_iterator<char>(file), {});
    }
    ~Place() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    std::string Path() const { return (m_folder / "a.cases").string(); }

    void Write(const std::uint8_t* data, std::size_t size) const {
        constexpr std::size_t record = 4;
        std::string bytes = m_sound;
        for (std::size_t i = 0; i + record <= size; i += record) {
            const std::size_t place = static_cast<std::size_t>(data[i]) << 16U |
                                      static_cast<std::size_t>(data[i + 1]) << 8U | data[i + 2];
            bytes[place % bytes.size()] = static_cast<char>(data[i + 3]);
        }
        for (const char* const ending : {"-wal", "-shm", "-journal", "-backup"}) {
            std::filesystem::remove(Path() + ending);
        }
        std::ofstream(Path(), std::ios::binary) << bytes;
    }

private:
    std::filesystem::path m_folder;
    std::string m_sound;
};

void readAll(CaseStore& store) {
    for (const CaseSummary& summary : store.Summaries()) {
        try {
            const CaseSession session(store, summary.id);
            require(session.GetId() == summary.id, "the case asked for");
        } catch (const CaseStoreError& error) {
            require(*error.what() != '\0', "why a case can't be read");
        }
    }
    const bool isSound = store.FindDamage().empty();
    if (store.GetAccess() == CaseStore::Access::ReadOnly) {
        return require(!store.GetNotice().text.empty(), "why nothing may be written");
    }
    require(isSound, "what is written in is sound");
    const CaseId added = store.AddCase(smallQuestionnaire(), "new");
    require(store.Summary(added).label == "new", "what is added is there");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Place place;
    place.Write(data, size);
    try {
        CaseStore store = CaseStore::Open(place.Path(), options());
        readAll(store);
    } catch (const CaseStoreError& error) {
        require(*error.what() != '\0', "why the file can't be used");
    }
    return 0;
}
