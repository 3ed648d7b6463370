// SPDX-License-Identifier: Zlib
// What an engine's file does with each public header once the platform's headers are there too.
// A generated unit includes this last, after defining NAMES_OF_<its header's path as an
// identifier>, and gets only its own header's part. The functions are inline so that they are
// compiled, names looked up and calls resolved, but never emitted or run: a platform macro that
// rewrites one of these names fails the unit, wherever the header itself survived.

#if defined(NAMES_OF_window_Configuration_h)
#define NAMES_USED
inline bool Readable(const std::string& text) {
    return Window::Configuration::ResolutionFromText(text).has_value() &&
           Window::Configuration::TickPeriod(Window::Configuration::DefaultPollRate) > 0;
}
#endif

#if defined(NAMES_OF_window_IWindow_h)
#define NAMES_USED
inline Window::NativeHandle HandleOf(Window::IWindow& window) {
    return window.GetNativeHandle();
}
#endif

#if defined(NAMES_OF_window_InputVocabulary_h)
#define NAMES_USED
inline bool SortsFirst(Window::Key key) {
    return std::less<Window::Key>{}(Window::Key::None, key);
}
#endif

#if defined(NAMES_OF_window_InstanceExtensions_h)
#define NAMES_USED
inline unsigned int CountOf(const Window::InstanceExtensions& extensions) {
    return extensions.count;
}
#endif

#if defined(NAMES_OF_window_Manufacture_h)
#define NAMES_USED
inline Zenk::IntrudablePointer<Window::IWindow> StartUp() {
    Window::ManufactureInputCollector()->CreateKeyReactor(Window::Key::None, 0);
    return Window::ManufactureWindowFactory()->CreateWindow();
}
#endif

#if defined(NAMES_OF_window_NativeHandle_h)
#define NAMES_USED
inline bool Names(const Window::NativeHandle& handle) {
    return static_cast<bool>(handle);
}
#endif

#if defined(NAMES_OF_window_Reactors_h)
#define NAMES_USED
inline void React(Window::IKeyReactor& reactor) {
    reactor.SetPressCallback(
        [](std::set<Window::Mode> modes) { return modes.count(Window::Mode::LeftCtrl) != 0; });
}
#endif

#if defined(NAMES_OF_window_Resolution_h)
#define NAMES_USED
inline bool TooSmall(const Window::Resolution& resolution) {
    return resolution.width < Window::MinimumResolution.width;
}
#endif

#if defined(NAMES_OF_window_SInputCollector_h)
#define NAMES_USED
inline Zenk::IntrudablePointer<Window::IKeyReactor> Watch(Window::SInputCollector& collector) {
    collector.QueryInputEvents();
    return collector.CreateKeyReactor(Window::Key::None, 0);
}
#endif

#if defined(NAMES_OF_window_SWindowFactory_h)
#define NAMES_USED
inline Zenk::IntrudablePointer<Window::IWindow> Open(Window::SWindowFactory& factory) {
    return factory.CreateWindow();
}
#endif

#if defined(NAMES_OF_window_Version_h)
#define NAMES_USED
inline const char* VersionText() {
    return WINDOW_VERSION_STRING;
}
#endif

#if defined(NAMES_OF_window_VulkanSurface_h)
#define NAMES_USED
inline VkResult MakeSurface(VkInstance instance, Window::IWindow& window, VkSurfaceKHR& surface) {
    try {
        surface = Window::Vulkan::CreateSurface(instance, window);
        return VK_SUCCESS;
    } catch (const Window::Vulkan::SurfaceError& error) {
        return error.Result();
    }
}
#endif

#if defined(NAMES_OF_host_Bootstrap_h)
#define NAMES_USED
inline Zenk::IntrudablePointer<Window::IWindow> Run(const std::filesystem::path& config) {
    Host::Bootstrap host(Host::BootstrapSettings{config});
    host.InputCollector().CreateKeyReactor(Window::Key::None, 0);
    return host.WindowFactory().CreateWindow();
}
#endif

#if defined(NAMES_OF_host_ConfigFile_h)
#define NAMES_USED
inline std::string Read(Host::ConfigFile& config) {
    return config.ReadText("Window/Resolution", "{800, 600}");
}
#endif

#if defined(NAMES_OF_host_FrameUtility_h)
#define NAMES_USED
inline void Pump(Host::FrameUtility& frames) {
    frames.Pump();
}
#endif

#if defined(NAMES_OF_host_InputRecorder_h)
#define NAMES_USED
inline void Record(Host::InputRecorder& recorder) {
    recorder.Polling(1);
    recorder.Polled();
}
#endif

#if defined(NAMES_OF_host_InputScript_h)
#define NAMES_USED
inline unsigned long long Replay(std::istream& input) {
    Host::InputScript script = Host::InputScript::Parse(input, "session.txt");
    script.InjectDue(0);
    return script.Length() + script.Entries().front().event.button;
}
#endif

#if defined(NAMES_OF_host_PrintableText_h)
#define NAMES_USED
inline std::string Shown(const std::string& text) {
    return Host::IsUtf8(text) ? Host::Printable(text, 80) : Host::Quoted(text);
}
#endif

#if defined(NAMES_OF_host_InstanceRegistration_h)
#define NAMES_USED
struct Service {};
inline void Register(Service& service) {
    const Host::InstanceRegistration<Service> registration(service);
}
#endif

#if defined(NAMES_OF_host_MessageLog_h)
#define NAMES_USED
inline void Log(Host::MessageLog& log) {
    log.LogInfo("started");
}
#endif

#if defined(NAMES_OF_host_RuntimeUniqueId_h)
#define NAMES_USED
inline long long Next(Host::RuntimeUniqueId& ids) {
    return ids.NextId();
}
#endif

#if defined(NAMES_OF_common_ApplicationErrorException_h)
#define NAMES_USED
inline const char* Reason(const Common::ApplicationErrorException& error) {
    return error.what();
}
#endif

#if defined(NAMES_OF_common_ITicker_h)
#define NAMES_USED
inline void Beat(Common::ITicker& ticker) {
    ticker.SetTickCallback([](unsigned long long) {});
}
#endif

#if defined(NAMES_OF_common_SConfigFile_h)
#define NAMES_USED
inline int Read(Common::Config::SConfigFile& config) {
    return config.ReadInteger("Window/FullScreen", 0);
}
#endif

#if defined(NAMES_OF_common_SFrameUtility_h)
#define NAMES_USED
inline Zenk::IntrudablePointer<Common::ITicker> Tick(Common::SFrameUtility& frames) {
    return frames.MakeTicker(1000);
}
#endif

#if defined(NAMES_OF_common_SMessageLog_h)
#define NAMES_USED
inline void Log(Common::Log::SMessageLog& log) {
    log.LogError("failed");
}
#endif

#if defined(NAMES_OF_common_SRuntimeUniqueId_h)
#define NAMES_USED
inline long long Next(Common::Unique::SRuntimeUniqueId& ids) {
    return ids.NextId();
}
#endif

#if defined(NAMES_OF_common_export_h)
#define NAMES_USED
WINDOW_API void ExportedByTheLibrary();
#endif

#if defined(NAMES_OF_zenkbase_export_h)
#define NAMES_USED
ZENK_API void ExportedByTheBase();
#endif

#if defined(NAMES_OF_zenkbase_intrudable_h)
#define NAMES_USED
struct Counted : Zenk::Intrudable {};
#endif

#if defined(NAMES_OF_zenkbase_intrudable_pointer_h)
#define NAMES_USED
struct Counted : Zenk::Intrudable {};
inline Zenk::IntrudablePointer<Counted> Share(const Zenk::IntrudablePointer<Counted>& counted) {
    return counted;
}
#endif

#if defined(NAMES_OF_zenkbase_missing_instance_h)
#define NAMES_USED
inline std::string Text(const Zenk::MissingInstance& missing) {
    return missing.message;
}
#endif

#if defined(NAMES_OF_zenkbase_singleton_h)
#define NAMES_USED
struct Service {};
inline bool Registered() {
    return Zenk::Singleton<Service>().Exists();
}
#endif

#if defined(NAMES_OF_zenkbase_split_to_numbers_h)
#define NAMES_USED
inline std::size_t Count(const std::string& text) {
    return Zenk::SplitToNumbers(text).size();
}
#endif

#if defined(NAMES_OF_zenkbase_two_dimensional_coordinate_h)
#define NAMES_USED
inline bool AtOrigin(const Zenk::two_dimensional_coordinate<short>& point) {
    return point == Zenk::two_dimensional_coordinate<short>{};
}
#endif

// A public header added without a part here would be compiled beside the platforms' headers but
// never used after them.
#if !defined(NAMES_USED)
#error "tests/headers/Uses.h has no part for this unit's header"
#endif
