#include "report/tidy/TemplateTidier.h"

#include <algorithm>
#include <string>

#include "core/InputError.h"
#include "platform/files/CFile.h"
#include "platform/files/CMemFile.h"
#include "report/FileScanner.h"
#include "report/ParseException.h"
#include "report/detail/LineFinder.h"
#include "report/tidy/detail/CommandJoiner.h"
#include "report/tidy/detail/RtfReader.h"

namespace tessalink {

namespace {

using detail::CommandJoiner;
using detail::RtfPiece;
using detail::RtfReader;

constexpr std::string_view cRtfStart = "{\\rtf";
/// How many names of variables are kept, and how much of a command a message shows.
constexpr std::size_t cMaxNames = 65536;
constexpr std::size_t cMaxShown = 60;

void expectRtf(CFile& file) {
    std::string start(cRtfStart.size(), '\0');
    file.SeekToBegin();
    start.resize(file.Read(start.data(), start.size()));
    if (start == cRtfStart) return;
    throw InputError({file.GetGivenPath(), 1, 1},
                     "this is no RTF: save the template as Rich Text Format; one that is stored "
                     "scrambled is made plain by 'tessalink unscramble'");
}

/// The beginning of a command, on one line.
std::string shownCommand(std::string_view command) {
    std::string text(command.substr(0, cMaxShown));
    std::replace_if(
        text.begin(), text.end(), [](unsigned char ch) { return ch < ' '; }, ' ');
    return command.size() > cMaxShown ? text + "..." : text;
}

std::string messageOf(const CommandJoiner::Result& result) {
    const std::string text = shownCommand(result.text);
    if (result.fault) return "'" + text + "': " + result.fault;
    if (result.isSplit) {
        return "'" + text +
               "' is a variable, so the letters behind it were taken for text; put {} "
               "between them, or name the variables";
    }
    return result.isJoined ? "put together '" + text + "'"
                           : "typographic characters replaced in '" + text + "'";
}

/// Adds the names that a command uses.
void collectNames(std::string_view command, detail::NameSet& names) {
    CMemFile file(command);
    FileScanner scanner(file, 0);
    try {
        for (const Token* token = &scanner.NextText();
             token->GetKind() != Token::tkEnd && token->GetKind() != Token::tkNone;
             token = &scanner.NextExp()) {
            const bool isName = token->GetKind() == Token::tkIdent &&
                                token->Text().size() <= FileScanner::cMaxCommandWord;
            if (isName && names.size() < cMaxNames) names.emplace(token->Text());
        }
    } catch (const ParseException&) {
        // A command that is not complete has told enough.
    }
}

}  // namespace

/// The names of variables: those of the caller, and, once they are needed, those that the template
/// uses in commands that are not parted.
struct TemplateTidier::Names {
    detail::NameSet names;
    bool isComplete = false;
};

/// One way through the template.
class TemplateTidier::Pass {
public:
    Pass(CFile& file, CommandJoiner::NameSource names, CommandJoiner::ResultListener listener)
        : m_reader(file), m_joiner(std::move(names), std::move(listener)) {}

    /// Hands on all text, to its end; returns the last piece, of kind end, cut or unopened. The
    /// other listener gets each "@" that is not shown.
    template <class WRITE, class HIDDEN>
    const RtfPiece& Run(WRITE write, HIDDEN tellHidden) {
        for (;;) {
            const RtfPiece& piece = m_joiner.IsOpen() ? m_reader.Next() : m_reader.NextRun();
            if (m_joiner.IsOpen()) {
                const std::size_t taken = m_joiner.Take(piece);
                if (!m_joiner.IsOpen()) write(std::string_view(m_joiner.Output()));
                if (taken > 0) {
                    m_reader.GiveBack(piece.raw.size() - taken);
                    continue;
                }
            }
            switch (piece.kind) {
                case RtfPiece::Kind::command:
                    m_joiner.Begin(piece);
                    continue;
                case RtfPiece::Kind::end:
                case RtfPiece::Kind::cut:
                case RtfPiece::Kind::unopened:
                    return piece;
                case RtfPiece::Kind::hiddenCommand:
                    tellHidden(piece);
                    break;
                default:
                    break;
            }
            write(piece.raw);
        }
    }

private:
    RtfReader m_reader;
    CommandJoiner m_joiner;
};

TemplateTidier::TemplateTidier(CFile& templateFile)
    : m_file(templateFile), m_names(std::make_unique<Names>()) {}

TemplateTidier::~TemplateTidier() = default;

void TemplateTidier::AddVariable(std::string_view name) {
    m_names->names.emplace(name);
}

/// All names that are known, unless this one is, for a pass that is under way.
const TemplateTidier::Names& TemplateTidier::names_for(std::string_view name) {
    if (m_names->isComplete || m_names->names.contains(name)) return *m_names;
    m_names->isComplete = true;
    const auto offset = static_cast<std::int64_t>(m_file.GetPosition());
    const auto collect = [this](const CommandJoiner::Result& result) {
        if (!result.fault && !result.isAmbiguous) collectNames(result.text, m_names->names);
    };
    Pass(
        m_file, [](std::string_view) { return nullptr; }, collect)
        .Run([](std::string_view) {}, [](const RtfPiece&) {});
    m_file.Seek(offset, CFile::begin);
    return *m_names;
}

bool TemplateTidier::Tidy(CFile& output, const Listener& listener) {
    return run([&](std::string_view text) { output.Write(text.data(), text.size()); }, listener);
}

bool TemplateTidier::Check(const Listener& listener) {
    return run([](std::string_view) {}, listener);
}

bool TemplateTidier::run(const Writer& write, const Listener& listener) {
    expectRtf(m_file);
    bool isChanged = false;
    detail::LineFinder lines;
    const auto place = [&](std::uint64_t offset) {
        const auto [line, column] = lines.Find(m_file, 0, offset);
        return TextPlace{m_file.GetGivenPath(), line, column};
    };
    const auto tell = [&](TidyFinding::Kind kind, std::uint64_t first, std::string_view message) {
        listener({kind, place(first), CString(message)});
    };
    const auto tellResult = [&](const CommandJoiner::Result& result) {
        const bool isLeft = result.fault || result.isSplit;
        const bool isNew = !result.fault && (result.isJoined || result.isRetyped);
        isChanged |= isNew;
        if (!isLeft && !isNew) return;
        tell(isLeft ? TidyFinding::Kind::left : TidyFinding::Kind::changed, result.first,
             messageOf(result));
    };
    Pass pass(
        m_file, [this](std::string_view name) { return &names_for(name).names; }, tellResult);
    const RtfPiece& last = pass.Run(write, [&](const RtfPiece& piece) {
        tell(TidyFinding::Kind::left, piece.first,
             "an @ in what is not shown (a font, a picture, the instruction of a field, deleted "
             "text): reports take it for a command; remove it in the word processor");
    });
    if (last.kind == RtfPiece::Kind::end) return isChanged;
    throw InputError(place(last.first),
                     last.kind == RtfPiece::Kind::cut
                         ? "the file ends inside a group: it is cut; save the template again"
                         : "a } that closes no group: save the template again");
}

}  // namespace tessalink
