// Failures identified by a catalog and a message ID, with their text taken from a message catalog.
#pragma once

#include "qel/util/platform_export.hpp"

#include <memory>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace qel::msgid {

/// One argument of a message: narrow text in the terminal's encoding, or wide text.
using Argument = std::variant<std::string, std::u16string>;

/// What names a message: its catalog, its ID there, and the arguments in order.
struct ZEP_CONFIG_PLATFORM_API MessageID {
    std::string catalog;             ///< where its text stands
    std::string id;                  ///< its name there
    std::vector<Argument> arguments; ///< what its text names, in order
};

/// The identifier users may search for: catalog and ID joined by a colon. Throws std::bad_alloc.
ZEP_CONFIG_PLATFORM_API std::string error_identifier(const MessageID& message);

/// The catalog's text with the arguments in place. A message that the catalog does not know gives its
/// identifier followed by the arguments. Throws std::bad_alloc.
ZEP_CONFIG_PLATFORM_API std::string catalog_text(const MessageID& message);

/// The interface under which every message-ID exception can be caught.
class ZEP_CONFIG_PLATFORM_API IMsgIDException {
public:
    virtual ~IMsgIDException();
    ///@{
    /// What was thrown, valid as long as the exception.
    virtual const std::string& catalog() const noexcept = 0;
    virtual const std::string& message_id() const noexcept = 0;
    virtual const std::vector<Argument>& arguments() const noexcept = 0;
    /// Catalog and ID, as error_identifier joins them.
    virtual const std::string& identifier() const noexcept = 0;
    ///@}

protected:
    IMsgIDException() = default;
    ///@{
    /// For derived classes. Throws nothing.
    IMsgIDException(const IMsgIDException&) = default;
    IMsgIDException& operator=(const IMsgIDException&) = default;
    ///@}
};

/// Base of the exception types, one derived type per message ID. what() is the catalog's text. Copies share
/// their content, so that copying one while it is thrown cannot fail.
class ZEP_CONFIG_PLATFORM_API MsgIDException : public std::runtime_error, public IMsgIDException {
public:
    /// Throws std::bad_alloc.
    explicit MsgIDException(MessageID message);
    ///@{
    /// Copies share their content.
    MsgIDException(const MsgIDException&) noexcept;
    MsgIDException& operator=(const MsgIDException&) noexcept;
    ///@}
    ~MsgIDException() override;

    const std::string& catalog() const noexcept override;
    const std::string& message_id() const noexcept override;
    const std::vector<Argument>& arguments() const noexcept override;
    const std::string& identifier() const noexcept override;

private:
    struct Content;
    std::shared_ptr<const Content> content_;
};

/// Sees every message-ID exception just before it is thrown. The process has one such hook; none at the
/// start.
using LegacyErrorHook = void (*)(const IMsgIDException&);

/// Installs `hook` (null for none) and returns the one that was installed before. Safe from any thread.
ZEP_CONFIG_PLATFORM_API LegacyErrorHook set_legacy_error_hook(LegacyErrorHook hook) noexcept;

/// Calls the installed hook, if any; to be called right before throwing. What the hook throws passes out.
ZEP_CONFIG_PLATFORM_API void notify_legacy_error_hook(const IMsgIDException& failure);

} // namespace qel::msgid
