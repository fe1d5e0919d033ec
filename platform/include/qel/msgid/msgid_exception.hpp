// Exceptions identified by a catalog and a message ID. Their text comes from the message catalog.
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

ZEP_CONFIG_PLATFORM_QUIET_BEGIN

/// Identifies a message: its catalog, its ID in the catalog, and the arguments in order.
struct ZEP_CONFIG_PLATFORM_API MessageID {
    std::string catalog;             ///< the catalog that has its text
    std::string id;                  ///< its name in the catalog
    std::vector<Argument> arguments; ///< the values inserted into its text, in order
};

/// The identifier that users can search for: catalog and ID, joined by a colon. Throws std::bad_alloc.
ZEP_CONFIG_PLATFORM_API std::string error_identifier(const MessageID& message);

/// The catalog's text with the arguments inserted. For a message that is not in the catalog, its identifier followed by
/// the arguments. Throws std::bad_alloc.
ZEP_CONFIG_PLATFORM_API std::string catalog_text(const MessageID& message);

/// The interface by which every message-ID exception can be caught.
class ZEP_CONFIG_PLATFORM_API IMsgIDException {
public:
    virtual ~IMsgIDException();
    ///@{
    /// The message that was thrown. The references are valid as long as the exception.
    virtual const std::string& catalog() const noexcept = 0;
    virtual const std::string& message_id() const noexcept = 0;
    virtual const std::vector<Argument>& arguments() const noexcept = 0;
    /// Catalog and ID, as error_identifier joins them.
    virtual const std::string& identifier() const noexcept = 0;
    ///@}

protected:
    IMsgIDException() = default;
    ///@{
    /// For derived classes.
    IMsgIDException(const IMsgIDException&) = default;
    IMsgIDException& operator=(const IMsgIDException&) = default;
    ///@}
};

/// Base class of the exception types; there is one derived type per message ID. what() is the catalog's text. Copies
/// share their content, so copying one while it is thrown cannot fail.
class ZEP_CONFIG_PLATFORM_API MsgIDException : public std::runtime_error, public IMsgIDException {
public:
    /// Throws std::bad_alloc.
    explicit MsgIDException(MessageID message);
    ///@{
    /// Copies share the content of the original.
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

ZEP_CONFIG_PLATFORM_QUIET_END

/// A function that is called with every message-ID exception just before it is thrown, in the thread that throws. The
/// process has one such hook, and none at the start. The reference is valid during the call.
using LegacyErrorHook = void (*)(const IMsgIDException&);

/// Installs `hook` (null for none) and returns the one that was installed before. May be called from any thread. The
/// earlier hook may still be running in another one, so its code must stay loaded.
ZEP_CONFIG_PLATFORM_API LegacyErrorHook set_legacy_error_hook(LegacyErrorHook hook) noexcept;

/// Calls the installed hook, if any. Call it right before throwing. Throws what the hook throws.
ZEP_CONFIG_PLATFORM_API void notify_legacy_error_hook(const IMsgIDException& failure);

} // namespace qel::msgid
