#include "questionnaire/Questionnaire.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "core/FileText.h"
#include "core/MD5Hash.h"
#include "platform/files/CFile.h"
#include "platform/files/PathText.h"
#include "questionnaire/detail/FileLoader.h"
#include "questionnaire/detail/QuestionnaireCheck.h"

namespace tessalink {

IMPLEMENT_DYNAMIC(QuestionnaireFaults, CException)

namespace {

constexpr std::size_t cMaxFile = std::size_t{64} << 20;

constexpr UINT cOpenFlags = CFile::modeRead | CFile::shareDenyWrite;

/// What is wrong with a file, without its name.
CString causeOf(const CString& path, const CFileException& error) {
    const CString start = path + ": ";
    std::string_view cause = error.what();
    if (cause.starts_with(start.View())) cause.remove_prefix(start.View().size());
    return CString(cause);
}

std::string readWhole(CFile& file, const CString& path) {
    std::string text = readText(file, cMaxFile);
    if (text.size() > cMaxFile) throw InputError({path, 1, 1}, "the file is larger than 64 MiB");
    return text;
}

std::optional<std::string> readFile(const CString& path) {
    CFile file;
    CFileException error;
    if (!file.Open(path, cOpenFlags, &error)) {
        if (error.m_cause == CFileException::fileNotFound) return std::nullopt;
        throw InputError({path, 1, 1}, "can't be read: " + causeOf(path, error));
    }
    return readWhole(file, path);
}

std::vector<std::string> namesIn(const CString& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(pathOf(folder.View()), error), end;
         !error && entry != end; entry.increment(error)) {
        names.push_back(nameOf(entry->path().filename()));
    }
    return names;
}

using Digest = std::array<unsigned char, 16>;

Digest digestOf(std::string_view bytes) {
    Digest digest{};
    MD5Hash::GetHash(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(),
                     digest.data());
    return digest;
}

template <class T>
std::optional<std::size_t> positionOf(const std::vector<T>& values, std::string_view id) {
    const auto found = std::find_if(values.begin(), values.end(),
                                    [&](const T& value) { return value.id.View() == id; });
    if (found == values.end()) return std::nullopt;
    return static_cast<std::size_t>(found - values.begin());
}

}  // namespace

// The digest of the digests of names and bytes, one after the other.
std::string hashOf(const QuestionnaireFiles& files) {
    std::string all;
    for (const auto& [name, bytes] : files) {
        for (const std::string* part : {&name, &bytes}) {
            const Digest digest = digestOf(*part);
            all.append(digest.begin(), digest.end());
        }
    }
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : digestOf(all)) {
        text += digits[byte >> 4U];
        text += digits[byte & 15U];
    }
    return text;
}

struct Questionnaire::Data {
    QuestionnaireModel model;
    std::optional<NormTable> norms;
    std::optional<GraphFile> graphs;
    QuestionnaireFiles files;
    std::string hash;

    static std::shared_ptr<const Data> Read(detail::FileLoader loader) {
        detail::QuestionnaireCheck check(loader);
        check.Read();
        if (!check.Faults().empty()) throw QuestionnaireFaults(check.Faults());
        auto data = std::make_shared<Data>();
        data->model = check.TakeModel();
        data->norms = check.TakeNorms();
        data->graphs = check.TakeGraphs();
        data->files = loader.Take();
        data->hash = hashOf(data->files);
        return data;
    }
};

QuestionnaireFaults::QuestionnaireFaults(std::vector<InputError> faults)
    : CException(faults.front().what()), m_faults(std::move(faults)) {}

Questionnaire Questionnaire::Read(const CString& folder) {
    // Opened here, so that it is no fault of a questionnaire when there is none.
    CFile(folder + "/" + cFileName, cOpenFlags).Close();
    return Questionnaire(Data::Read({[folder](const std::string& name) {
                                         return readFile(folder + "/" +
                                                         CString(std::string_view(name)));
                                     },
                                     [folder] { return namesIn(folder); }, folder}));
}

Questionnaire Questionnaire::Read(const QuestionnaireFiles& files, const CString& name) {
    const auto load = [&files](const std::string& wanted) {
        const auto found = files.find(wanted);
        return found != files.end() ? std::optional(found->second) : std::nullopt;
    };
    const auto list = [&files] {
        std::vector<std::string> names;
        for (const auto& [known, text] : files) names.push_back(known);
        return names;
    };
    return Questionnaire(Data::Read({load, list, name}));
}

const QuestionnaireModel& Questionnaire::Model() const {
    return m_data->model;
}

const NormTable* Questionnaire::Norms() const {
    return m_data->norms ? &*m_data->norms : nullptr;
}

const GraphFile* Questionnaire::Graphs() const {
    return m_data->graphs ? &*m_data->graphs : nullptr;
}

const QuestionnaireFiles& Questionnaire::Files() const {
    return m_data->files;
}

const std::string& Questionnaire::Hash() const {
    return m_data->hash;
}

std::optional<std::size_t> Questionnaire::FindItem(std::string_view id) const {
    return positionOf(m_data->model.items, id);
}

std::optional<std::size_t> Questionnaire::FindScale(std::string_view id) const {
    return positionOf(m_data->model.scales, id);
}

std::optional<std::size_t> Questionnaire::FindField(std::string_view id) const {
    return positionOf(m_data->model.fields, id);
}

std::optional<std::size_t> Questionnaire::FindReport(std::string_view id) const {
    return positionOf(m_data->model.reports, id);
}

std::optional<double> Questionnaire::ValueOf(std::size_t item,
                                             const std::optional<int>& answer) const {
    if (!answer) return std::nullopt;
    const ResponseSet& set = m_data->model.responseSets[m_data->model.items[item].responses];
    if (!set.HasChoices()) return *answer;
    return set.choices[static_cast<std::size_t>(*answer) - 1].value;
}

}  // namespace tessalink
