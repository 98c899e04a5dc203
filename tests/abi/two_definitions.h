// Must be refused (check_one_definition.cmake): the library and its hosts see two definitions.
class Double {
#if defined(KELMO_LOCALIZER_BUILDING)
  ~Double();
#else
  ~Double() {}
#endif
};
