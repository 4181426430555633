#pragma once

#include <optional>
#include <utility>

#include "report/coverage/PartListener.h"

namespace tessalink {

/// A parser that tells a listener which parts of templates it runs and which it passes over.
/// `Parser` is FileParser or a class derived from it; a class derived from this one has to override
/// create_parser, so that includes and deferred blocks are listened to as well. Other parsers do
/// nothing for it.
template <class Parser>
class ListenedParser : public Parser {
public:
    /// The listener, not owned, must outlive the parser, which gets the other arguments.
    template <class... Arguments>
    explicit ListenedParser(PartListener& listener, Arguments&&... arguments)
        : Parser(std::forward<Arguments>(arguments)...), m_listener(listener) {}

protected:
    int get_cond_stmt(const Token& token, int execute) override {
        const Place outer = std::exchange(m_place, Place::Then);
        const int result = Parser::get_cond_stmt(token, execute);
        m_place = outer;
        return result;
    }

    /// The statements of the whole text, or of a branch.
    int get_stmt(const Token& token, int execute) override {
        const std::optional<PartKind> kind = next_part();
        const auto read = [&] { return Parser::get_stmt(token, execute); };
        return kind ? listened(*kind, this->token_spot(), execute, read) : read();
    }

    int get_include(const Token& token, int execute) override {
        return listened(PartKind::Include, this->statement_spot(), execute,
                        [&] { return Parser::get_include(token, execute); });
    }

    /// What is told which parts run.
    PartListener& listener() { return m_listener; }

private:
    /// Where the next statements stand: in the whole text, or in an @IF.
    enum class Place { Text, Then, Else };

    /// What the statements are that come next; nothing for those of a whole template.
    std::optional<PartKind> next_part() {
        if (m_place == Place::Else) return PartKind::Else;
        if (m_place == Place::Text) {
            return this->is_deferred_block() ? std::optional(PartKind::Block) : std::nullopt;
        }
        m_place = Place::Else;
        return PartKind::Then;
    }

    template <class Step>
    int listened(PartKind kind, const TemplateSpot& start, int execute, const Step& step) {
        if (start.file == nullptr) return step();
        m_listener.PartBegins(kind, start, execute != 0);
        const int result = step();
        m_listener.PartEnds(this->token_spot());
        return result;
    }

    PartListener& m_listener;
    Place m_place = Place::Text;
};

}  // namespace tessalink
