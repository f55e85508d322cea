#include "office/uno_office.h"

#include <chrono>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XComponentLoader.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <osl/file.hxx>
#include <rtl/bootstrap.hxx>
#include <thread>

#include "office/find_office.h"

namespace luming {

namespace css = com::sun::star;
using css::uno::Reference;

namespace {

/// Types that our side of the line needs beyond the basic ones; without them it dies at its first use.
Reference<css::uno::XComponentContext> LocalContext(const std::filesystem::path& office) {
  const std::filesystem::path types = office / "types" / "offapi.rdb";
  std::error_code missing;
  if (!std::filesystem::exists(types, missing)) {
    throw NoOffice("缺少 " + types.string());
  }
  rtl::Bootstrap::set("URE_MORE_TYPES", FileUrl(types));
  return cppu::defaultBootstrap_InitialComponentContext();
}

}  // namespace

rtl::OUString ToUno(std::string_view utf8) {
  return {utf8.data(), static_cast<sal_Int32>(utf8.size()), RTL_TEXTENCODING_UTF8};
}

std::string FromUno(const rtl::OUString& text) {
  const rtl::OString bytes = rtl::OUStringToOString(text, RTL_TEXTENCODING_UTF8);
  return {bytes.getStr(), static_cast<std::size_t>(bytes.getLength())};
}

rtl::OUString FileUrl(const std::filesystem::path& file) {
  rtl::OUString url;
  osl::FileBase::getFileURLFromSystemPath(ToUno(file.string()), url);
  return url;
}

UnoOffice::UnoOffice(const std::filesystem::path& office) : process_(office), local_(LocalContext(office)) {
  using namespace std::chrono_literals;
  constexpr int kTries = 1500;  // of 20 ms each
  const auto resolver = css::bridge::UnoUrlResolver::create(local_);
  const rtl::OUString place = ToUno("uno:pipe,name=" + process_.pipe() + ";urp;StarOffice.ComponentContext");
  for (int tries = 0; tries < kTries; ++tries) {
    try {
      const Reference<css::uno::XComponentContext> remote(resolver->resolve(place), css::uno::UNO_QUERY_THROW);
      desktop_ = css::frame::Desktop::create(remote);
      return;
    } catch (const css::connection::NoConnectException&) {
      process_.KeepAlive();
      std::this_thread::sleep_for(20ms);
    }
  }
  throw OfficeRefused("办公软件没有响应。");
}

UnoOffice::~UnoOffice() {
  try {
    if (desktop_.is()) desktop_->terminate();
  } catch (const css::uno::Exception&) {
    // It is gone already, which is what was asked for.
  }
  desktop_.clear();
  process_.AwaitEnd();
  Reference<css::lang::XComponent>(local_, css::uno::UNO_QUERY_THROW)->dispose();
}

Reference<css::lang::XComponent> UnoOffice::Load(const std::filesystem::path& file, const std::string& filter) {
  const Reference<css::frame::XComponentLoader> loader(desktop_, css::uno::UNO_QUERY_THROW);
  css::uno::Sequence<css::beans::PropertyValue> options(2);
  options[0].Name = "Hidden";
  options[0].Value <<= true;
  options[1].Name = "FilterName";
  options[1].Value <<= ToUno(filter);
  return loader->loadComponentFromURL(FileUrl(file), "_blank", 0, options);
}

}  // namespace luming
