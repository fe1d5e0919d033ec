// Memory limits against the memory of this machine.
#include "preflight/amounts.hpp"
#include "preflight/groups.hpp"
#include "preflight/size_settings.hpp"
#include "system/memory.hpp"

#include <algorithm>

namespace orvane::preflight {
namespace {

using qel::config::ServerSettings;

/// Whether the server compares it with the memory in use: above that memory, it never acts.
bool is_of_memory(const SizeSetting& setting) {
    return setting.bytes != nullptr && setting.directory == nullptr;
}

/// "24 GiB of memory", and what limits it.
std::string text_of(const Memory& memory) {
    std::string text = "this machine has " + amount(memory.physical) + " of memory";
    if (memory.swap != 0) text += " and " + amount(memory.swap) + " of swap space";
    if (memory.limit) text += ", limited to " + amount(*memory.limit) + " by " + memory.limited_by;
    return text;
}

void look_at_one(const SizeSetting& setting, const Memory& memory, std::uint64_t usable,
                 const ServerSettings& settings, Findings& findings) {
    const Bytes bytes = setting.bytes(settings);
    if (!bytes) return;
    if (*bytes > usable + memory.swap)
        findings.add(Kind::out_of_reach, setting.flag,
                     text_of(memory) + ": too little for this to have an effect",
                     "Set it below " + amount(usable) + ".");
    else
        findings.add(Kind::within_memory, setting.flag, amount(*bytes) + " of " + amount(usable));
}

/// All workers just below their limit, and the server below its threshold.
void look_at_sum(const Memory& memory, std::uint64_t usable, const ServerSettings& settings,
                 Findings& findings) {
    const Bytes each = settings.worker_restart_memory_limit();
    const auto& workers = settings.num_workers();
    if (!each || !workers || *workers == 0) return;
    // One that is out of reach is reported already.
    const std::uint64_t threshold = settings.server_memory_threshold().value_or(0);
    const std::uint64_t server = threshold <= usable ? threshold : 0;
    const std::string sum = std::to_string(*workers) + (*workers == 1 ? " worker of " : " workers of ") +
                            amount(*each) + (server == 0 ? "" : " and the server's " + amount(server));
    // Divided, because the product may not fit.
    if (*each <= (usable - server) / *workers)
        findings.add(Kind::within_memory, flag::num_workers, sum + " fit into " + amount(usable));
    else
        findings.add(Kind::memory_exceeded, flag::num_workers,
                     sum + " can use more than there is: " + text_of(memory),
                     "Start fewer workers, or restart them at a lower limit.");
}

} // namespace

void look_at_resources(const Context& context, Findings& findings) {
    const ServerSettings& settings = context.settings;
    const auto is_given = [&](const SizeSetting& one) { return is_of_memory(one) && one.bytes(settings); };
    if (std::ranges::none_of(size_settings, is_given)) return;
    const auto memory = memory_here();
    if (!memory) return findings.add(Kind::look_failed, u"", "the system does not report its memory");
    const std::uint64_t usable = std::min(memory->physical, memory->limit.value_or(memory->physical));
    for (const SizeSetting& setting : size_settings)
        if (is_of_memory(setting)) look_at_one(setting, *memory, usable, settings, findings);
    look_at_sum(*memory, usable, settings, findings);
}

} // namespace orvane::preflight
