// The library's entry: one application object, constructed when the library is loaded
// and destroyed when it is unloaded. It deliberately does nothing else: the controls keep
// no global state, and the host's own CWinApp stays the application.
namespace {

class CZELCtlModule {
public:
    CZELCtlModule() = default;
    ~CZELCtlModule() = default;
};

[[maybe_unused]] CZELCtlModule theModule;

}  // namespace
