// Drawing variables: what they are called, what values they take, and where each is kept.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "drafting_host/command/session/asking.h"

namespace brenvik {

class CommandSession;

struct HostVariable {
    enum class Kind { Whole, Real, Text, Point };
    /// Drawing: saved with it, in the header of its file. Profile: one value for the host as a whole. Fixed:
    /// derived from the drawing and never set. Space: model space (1) or paper space (0). Layer: the current
    /// one. Viewport: the number of the viewport entered, 1 on the sheet, 2 in model space.
    enum class Place { Drawing, Profile, Fixed, Space, Layer, Viewport };

    std::string_view name;
    Kind kind = Kind::Whole;
    Place place = Place::Profile;
    std::string_view initial = "0";
    double least = 0, most = 0;  ///< Of numbers; equal for no bounds.
};

/// By name in any case, or null.
const HostVariable* FindHostVariable(std::string_view name);
std::span<const HostVariable> HostVariables();

/// The value as the prompt shows it.
std::string VariableText(const CommandSession& session, const HostVariable& variable);
/// The value of a variable that holds a number.
double VariableNumber(const CommandSession& session, std::string_view name);
/// Sets the value from an answer. Gives what is wrong with it, or an empty text. Throws Failure where the
/// drawing refuses a proper value.
std::string SetVariable(CommandSession& session, const HostVariable& variable, const std::string& answer);
/// What a variable's own name does when it is typed as a command: shows the value and asks for a new one.
Asking<void> AskVariable(CommandSession& session, const HostVariable& variable);

}  // namespace brenvik
