#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "core/TextPlace.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"

class CFile;

namespace tessalink {

/// What was done to a command of a template, or could not be done.
struct TidyFinding {
    /// What kinds of findings there are.
    enum class Kind : std::uint8_t {
        changed,  ///< the command was put together, or what the word processor put for a key
        left      ///< something stays as it is that the author must look at
    };

    Kind kind = Kind::changed;  ///< whether something was changed
    TextPlace place;            ///< where the command begins in the template as it was read
    CString message;            ///< says what was done, or why nothing was, and what to do
};

/// Puts commands together that a word processor has parted. An author types `@Name`; as soon as one
/// of its letters is bold, marked by the speller or edited later, the file has `@Na}{\b me`, which
/// the engine reads as `@Na`.
///
/// The letters of a command, parentheses and all, come to stand where its first one stood, with
/// the format of that. The markup that was between them goes behind the command in its order;
/// before it where what is behind may be left out or moved, so that groups stay balanced: before
/// `@IF`, with its `@THEN`, before `@COMMENT`, before the first `@DEFER_START` of a group and
/// before every
/// `@DEFER_END`, together with the markup up to the next block. A command that was parted takes the
/// white space along that it swallows, and a `\par` that directly follows.
///
/// In commands typographic quotes and dashes, non-breaking blanks and tabs become the keys that
/// were pressed, characters without width are left out, and `\{\}` directly behind a command
/// becomes the empty group that it stands for. Text constants in brackets stay as they are, markup
/// and quotes included, and so does all that is outside commands.
///
/// Where the letters behind a seam could also be text (`@Name` with a bold `s` behind it), the
/// variables decide that the caller knows or that the template uses elsewhere; if they don't, the
/// letters are put together.
///
/// Left as they are, and told: commands that don't end in their paragraph, commands in what is not
/// shown (fonts, pictures, the instructions of fields, deleted text), and commands with more than
/// cMaxLength bytes.
class TESSALINK_API TemplateTidier {
public:
    /// How long a command may be, and the markup within it, in bytes.
    static constexpr std::size_t cMaxLength = std::size_t{16} << 20;
    /// The longest markup in a command, in bytes.
    static constexpr std::size_t cMaxMarkup = std::size_t{1} << 20;

    /// Is told each finding.
    using Listener = std::function<void(const TidyFinding&)>;

    /// Reads a plain template, which must be open and outlive the tidier. The file is read a second
    /// time when the names of variables must decide.
    explicit TemplateTidier(CFile& templateFile);
    ~TemplateTidier();

    TemplateTidier(const TemplateTidier&) = delete;
    TemplateTidier& operator=(const TemplateTidier&) = delete;

    /// A variable that reports from this template have.
    void AddVariable(std::string_view name);

    /// Writes the tidied template to `output`, from its start, and tells each finding in the order
    /// of the template. Whether anything was changed. Throws InputError, with the output
    /// incomplete, for what is no RTF or has groups that are not closed; CFileException passes
    /// through.
    bool Tidy(CFile& output, const Listener& listener);
    /// The same without an output.
    bool Check(const Listener& listener);

private:
    class Pass;
    struct Names;
    using Writer = std::function<void(std::string_view)>;

    bool run(const Writer& write, const Listener& listener);

    const Names& names_for(std::string_view name);

    CFile& m_file;
    std::unique_ptr<Names> m_names;
};

}  // namespace tessalink
