// The completion for PowerShell.
#include "completing/choices.hpp"

namespace orvane::completing {
namespace {

constexpr auto powershell_head = R"(Register-ArgumentCompleter -Native -CommandName '@program@' -ScriptBlock {
    param($word, $line, $position)
    $before = @($line.CommandElements | Where-Object { $_.Extent.EndOffset -lt $position } | ForEach-Object { "$_" })
    $flags = [ordered]@{
@flags@    }
    $words = @()
    $values = $null
    $at = 1
)";

constexpr auto powershell_tool = R"(    $verbs = @(@verbs@)
    $options = @{
@options@    }
    $others = @{
@others@    }
    $verb = if ($before.Count -gt 1) { $before[1] } else { '' }
    $at = 2
    $own = if ($options.ContainsKey($verb)) { $options[$verb] } else { @{} }
    $ended = $false
    # The tool's own options come first.
    while ($at -lt $before.Count -and -not $ended) {
        $one = $before[$at]
        if ($one -ne '--' -and -not $own.Contains($one)) { break }
        $at++
        if ($one -eq '--') { $ended = $true; break }
        if (-not $own[$one]) { continue }
        if ($at -eq $before.Count) { $values = $own[$one] }
        $at++
    }
    $takes = if ($others.ContainsKey($verb)) { $others[$verb] } else { '' }
    if ($before.Count -lt 2) { $words = $verbs }
    elseif ($null -eq $values -and $at -ge $before.Count -and -not $ended) { $words = @($own.Keys) }
    if ($before.Count -ge 2 -and $takes -cne 'FLAGS' -and $takes -cne 'COMMAND') {
        if ($null -eq $values) { $words += @($takes -split ' ' | Where-Object { $_ -ne '-' }) }
        $at = $before.Count + 1
    }
)";

constexpr auto powershell_tail = R"(    $command = $false
    $server = $at -le $before.Count -and @tool_test@
    while ($at -lt $before.Count) {
        $one = $before[$at]
        $at++
        if (@command_test@$one -eq '--') { $command = $true; break }
        if (-not $flags.Contains($one) -or -not $flags[$one]) { continue }
        if ($at -eq $before.Count) { $values = $flags[$one] }
        $at++
    }
    if ($command) { return }
    if ($null -ne $values) {
        $words = switch -CaseSensitive ($values) {
            '-' { return }
            '-d' { @(Get-ChildItem -Directory -Path "$word*" | ForEach-Object FullName); break }
            '-f' { @(Get-ChildItem -Path "$word*" | ForEach-Object FullName); break }
            default { @($values -split ' ') }
        }
    } elseif ($server) { $words += @($flags.Keys) }
    $words | Where-Object { $_ -like "$word*" -or $values -ceq '-d' -or $values -ceq '-f' } |
        ForEach-Object {
            # What PowerShell would take apart is quoted.
            $text = if ($_ -match "[\s;']") { "'" + ($_ -replace "'", "''") + "'" } else { $_ }
            [System.Management.Automation.CompletionResult]::new($text, $_, 'ParameterValue', $_)
        }
}
)";

std::string entry(std::string_view name, std::string_view values, const std::string& indent) {
    return indent + "'" + std::string(name) + "' = " + quoted(values, "''") + "\n";
}

std::string entries(const std::vector<Choice>& choices, const std::string& indent) {
    return joined(choices, "", [&](const Choice& one) { return entry(one.text, one.values, indent); });
}

std::string verb_names() {
    return "'" + joined(verbs, "', '", &Verb::name) + "'";
}

std::string powershell_options() {
    return joined(verbs, "", [](const Verb& verb) {
        return "        '" + std::string(verb.name) + "' = [ordered]@{\n" +
               entries(option_choices(verb), "            ") + "        }\n";
    });
}

std::string powershell_others() {
    return joined(verbs, "",
                  [](const Verb& verb) { return entry(verb.name, what_follows(verb), "        "); });
}

} // namespace

std::string powershell(const std::string& program, bool is_tool) {
    return filled(std::string(powershell_head) + (is_tool ? powershell_tool : "") + powershell_tail,
                  {{"flags", entries(flag_choices(), "        ")},
                   {"verbs", verb_names()},
                   {"options", powershell_options()},
                   {"others", powershell_others()},
                   {"tool_test", is_tool ? "$before.Count -ge 2" : "$true"},
                   {"command_test", is_tool ? "$takes -ceq 'COMMAND' -and " : "$false -and "},
                   {"program", program}});
}

} // namespace orvane::completing
