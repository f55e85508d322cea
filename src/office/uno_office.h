#pragma once

#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <string>
#include <string_view>

#include "office/office_process.h"

namespace luming {

/// A running office program and the line to it. All UNO exceptions of its users mean that it is gone or refuses.
class UnoOffice {
 public:
  explicit UnoOffice(const std::filesystem::path& office);
  ~UnoOffice();
  UnoOffice(const UnoOffice&) = delete;
  UnoOffice& operator=(const UnoOffice&) = delete;

  /// @param filter the office program's name for the format; null when it cannot load the file
  com::sun::star::uno::Reference<com::sun::star::lang::XComponent> Load(const std::filesystem::path& file,
                                                                        const std::string& filter);
  const std::filesystem::path& scratch() const { return process_.scratch(); }

 private:
  OfficeProcess process_;
  com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> local_;
  com::sun::star::uno::Reference<com::sun::star::frame::XDesktop2> desktop_;
};

rtl::OUString ToUno(std::string_view utf8);
std::string FromUno(const rtl::OUString& text);
rtl::OUString FileUrl(const std::filesystem::path& file);

}  // namespace luming
