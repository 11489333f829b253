#pragma once

#include "foundation/PlistValue.hpp"
#include "foundation/UpdateInstructions.hpp"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vexto {

class Button;
class DistributedNotificationCenter;
class ForeignPreferences;
class TextField;
class View;
class Workspace;

// The pane's side of the daemon's software updates: it passes the user's requests on to the
// daemon, listens for the daemon's word that the update status changed, and shows the status
// the daemon leaves in its defaults. One shared object for the whole process.
class KRVXRemoteSparkleWrapper {
public:
    static constexpr std::string_view toggleAutomaticChecksInstruction =
        updateinstructions::toggleAutomaticChecks;
    static constexpr std::string_view checkNowInstruction = updateinstructions::checkNow;
    static constexpr std::string_view invalidateUpdateVersionInstruction =
        updateinstructions::invalidateUpdateVersion;
    static constexpr std::string_view automaticChecksKey = updateinstructions::automaticChecksKey;
    static constexpr std::string_view statusKey = updateinstructions::statusKey;

    struct Outlets {
        Button* autoUpdateCheckingSwitch = nullptr;
        Button* checkNowButton = nullptr;
        TextField* statusTextField = nullptr;
        TextField* statusDateTextField = nullptr;
    };

    // What the wrapper needs of the pane and the platform.
    struct Context {
        DistributedNotificationCenter* center = nullptr;
        ForeignPreferences* preferences = nullptr;
        Workspace* workspace = nullptr;
        std::function<bool()> isDaemonEnabled;
        std::function<void()> updatePreferencePaneFrame;
        // The product's short version and display name, read from the pane bundle afresh.
        std::function<std::optional<std::string>()> currentShortVersionString;
        std::function<std::string()> displayName;
        std::function<std::string(std::string_view)> localized;
    };

    static KRVXRemoteSparkleWrapper& sharedSparkleWrapper();

    // Starts listening to the daemon; the shared object then serves this context until
    // `disconnect`.
    void connect(Context context);
    void disconnect();
    void setOutlets(const Outlets& outlets) { outlets_ = outlets; }
    const Outlets& outlets() const { return outlets_; }

    void awakeFromNib() { updateControls(); }
    void toggleAutomaticChecking();
    void checkForUpdates();
    // Opens the address the sender carries as its tool tip; a beep when it has none.
    void visitProductPage(const View* sender);

    std::optional<PlistValue> objectForKey(std::string_view key) const;
    bool automaticallyChecksForUpdates() const;
    void updateControls();
    // The same, for a caller that has just asked whether the daemon runs.
    void updateControlsForDaemonEnabled(bool enabled);
    void handleInstruction(const std::optional<std::string>& object);

private:
    KRVXRemoteSparkleWrapper() = default;
    void post(std::string_view instruction);
    std::string localized(std::string_view text) const;
    void statusLines(const PlistDictionary& fields, const std::string& version, std::string& status,
                     std::string& date) const;

    Context context_;
    Outlets outlets_;
};

} // namespace vexto
