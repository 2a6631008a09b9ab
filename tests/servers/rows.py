"""The servers, how each of them is told to serve a folder, and what has to come of a run."""
import dataclasses
import string
import subprocess
import typing

USER = "mira"
PASSWORD = "open-sesame"


def filled(text, place):
    """With $NAME replaced by what the place has for it, and $behind_http by that of the other."""
    names = {key: str(value) for key, value in place.items() if key != "behind"}
    if place.get("behind"):
        names |= {f"behind_{key}": str(value) for key, value in place["behind"].items()}
    return string.Template(text).safe_substitute(names)


@dataclasses.dataclass
class Server:
    name: str
    packages: list
    command: list
    files: dict = dataclasses.field(default_factory=dict)
    behind: str = ""  # The server that it stands in front of.
    prepare: typing.Optional[typing.Callable] = None


@dataclasses.dataclass
class Row:
    server: str
    what: str
    address: str
    outcome: str = "offered"
    foretold: str = ""  # What publish-check says, where that differs; both have a reason.
    report: str = ""    # Words in the updater's report.
    proxy: str = ""
    certificate: str = "good"
    leaves_part: bool = False


NGINX = """
daemon off; pid $run/pid; error_log $run/error.log; worker_processes 1;
events {}
http {
  access_log off;
  client_body_temp_path $run/tmp; proxy_temp_path $run/tmp; fastcgi_temp_path $run/tmp;
  uwsgi_temp_path $run/tmp; scgi_temp_path $run/tmp;
  limit_req_zone $$binary_remote_addr zone=one:1m rate=1r/s;
  server {
    listen 127.0.0.1:$http;
    listen 127.0.0.1:$https ssl;
    ssl_certificate $certificate; ssl_certificate_key $certificate;
    root $www;
    rewrite_log on;
    location /301/ { rewrite ^/301/(.*) /upd/$$1 permanent; }
    location /302/ { rewrite ^/302/(.*) /upd/$$1 redirect; }
    location ~ ^/303/(.*) { return 303 /upd/$$1; }
    location ~ ^/307/(.*) { return 307 /upd/$$1; }
    location ~ ^/308/(.*) { return 308 /upd/$$1; }
    location ~ ^/to-https/(.*) { return 301 https://localhost:$https/upd/$$1; }
    location ~ ^/to-http/(.*) { return 301 http://localhost:$http/upd/$$1; }
    location ~ ^/circle/(.*) { return 302 /circle/$$1; }
    location /gzip/ { alias $www/upd/; gzip on; gzip_types *; gzip_min_length 1; }
    location /limited/ { alias $www/upd/; limit_req zone=one; limit_req_status 429; }
    location /patient/ { alias $www/upd/; limit_req zone=one burst=20 nodelay; }
  }
}
"""

APACHE = """
ServerRoot $run
ServerName localhost
PidFile $run/pid
ErrorLog $run/error.log
LoadModule mpm_event_module /usr/lib/apache2/modules/mod_mpm_event.so
LoadModule authz_core_module /usr/lib/apache2/modules/mod_authz_core.so
LoadModule ssl_module /usr/lib/apache2/modules/mod_ssl.so
LoadModule socache_shmcb_module /usr/lib/apache2/modules/mod_socache_shmcb.so
LoadModule mime_module /usr/lib/apache2/modules/mod_mime.so
TypesConfig /etc/mime.types
Listen 127.0.0.1:$http
Listen 127.0.0.1:$https
DocumentRoot $www
<Directory $www>
  Require all granted
</Directory>
<VirtualHost 127.0.0.1:$https>
  SSLEngine on
  SSLCertificateFile $certificate
  SSLCertificateKeyFile $certificate
</VirtualHost>
"""

LIGHTTPD = """
server.document-root = "$www"
server.bind = "127.0.0.1"
server.port = $http
server.modules += ( "mod_openssl" )
server.upload-dirs = ( "$run/tmp" )
$types
$$SERVER["socket"] == "127.0.0.1:$https" { ssl.engine = "enable" ssl.pemfile = "$certificate" }
"""

CADDY = """
{
  admin off
  auto_https off
  storage file_system $run/tmp
}
http://127.0.0.1:$http, http://localhost:$http {
  root * $www
  file_server
}
https://localhost:$https {
  tls $certificate $certificate
  root * $www
  file_server
}
"""

HAPROXY = """
defaults
  mode http
  timeout connect 5s
  timeout client 30s
  timeout server 30s
frontend here
  bind 127.0.0.1:$http
  bind 127.0.0.1:$https ssl crt $certificate
  default_backend there
backend there
  server nginx 127.0.0.1:$behind_http
"""

H2O = """
pid-file: $run/pid
hosts:
  "localhost":
    listen:
      host: 127.0.0.1
      port: $http
    listen:
      host: 127.0.0.1
      port: $https
      ssl:
        certificate-file: $certificate
        key-file: $certificate
    paths:
      "/":
        file.dir: $www
"""

SQUID = """
http_port 127.0.0.1:$http
pid_filename $run/pid
cache_log $run/cache.log
access_log none
coredump_dir $run/tmp
cache_effective_user proxy
cache_mem 8 MB
shutdown_lifetime 1 seconds
acl here src 127.0.0.1
$logon
http_access deny all
"""
SQUID_LOGON = """
auth_param basic program /usr/lib/squid/basic_ncsa_auth $run/passwords
auth_param basic realm tests
acl known proxy_auth REQUIRED
http_access allow known
"""

TINYPROXY = """
Port $http
Listen 127.0.0.1
Timeout 60
LogFile "$run/tinyproxy.log"
MaxClients 20
Allow 127.0.0.1
"""

PRIVOXY = """
listen-address 127.0.0.1:$http
confdir /etc/privoxy
logdir $run
toggle 1
"""

VARNISH = """
vcl 4.1;
backend nginx { .host = "127.0.0.1"; .port = "$behind_http"; }
"""


def add_password(place):
    line = subprocess.run(["openssl", "passwd", "-apr1", PASSWORD], capture_output=True, text=True,
                          check=True).stdout.strip()
    (place["run"] / "passwords").write_text(f"{USER}:{line}\n")
    (place["run"] / "passwords").chmod(0o644)


def server(name, packages, command, behind="", prepare=None, **files):
    made = {each.replace("_", "."): text for each, text in files.items()}
    return Server(name, packages, command, made, behind, prepare)


SERVERS = {each.name: each for each in [
    server("nginx", ["nginx-light"], ["nginx", "-c", "$run/conf", "-e", "$run/error.log"],
           conf=NGINX),
    server("apache", ["apache2-bin", "media-types"], ["apache2", "-X", "-f", "$run/conf"],
           conf=APACHE),
    server("lighttpd", ["lighttpd", "lighttpd-mod-openssl"], ["lighttpd", "-D", "-f", "$run/conf"],
           conf=LIGHTTPD.replace(
               "$types", 'mimetype.assign = ( ".exe" => "application/octet-stream" )')),
    server("lighttpd-plain", ["lighttpd", "lighttpd-mod-openssl"],
           ["lighttpd", "-D", "-f", "$run/conf"], conf=LIGHTTPD.replace("$types", "")),
    server("caddy", ["caddy"], ["caddy", "run", "--config", "$run/conf", "--adapter", "caddyfile"],
           conf=CADDY),
    server("haproxy", ["haproxy"], ["haproxy", "-db", "-f", "$run/conf"], behind="nginx",
           conf=HAPROXY),
    server("h2o", ["h2o"], ["h2o", "-c", "$run/conf"], conf=H2O),
    server("busybox", ["busybox"],
           ["busybox", "httpd", "-f", "-p", "127.0.0.1:$http", "-h", "$www"]),
    server("python", ["python3"],
           ["/usr/bin/python3", "-m", "http.server", "--bind", "127.0.0.1", "--directory", "$www",
            "$http"]),
    server("varnish", ["varnish"],
           ["varnishd", "-F", "-a", "127.0.0.1:$http", "-f", "$run/conf", "-n", "$run/tmp/v",
            "-s", "malloc,32m"], behind="nginx", conf=VARNISH),
    server("squid", ["squid"], ["squid", "-N", "-f", "$run/conf"], behind="nginx",
           conf=SQUID.replace("$logon", "http_access allow here")),
    server("squid-logon", ["squid"], ["squid", "-N", "-f", "$run/conf"], behind="nginx",
           prepare=add_password, conf=SQUID.replace("$logon", SQUID_LOGON)),
    server("tinyproxy", ["tinyproxy-bin"], ["tinyproxy", "-d", "-c", "$run/conf"], behind="nginx",
           conf=TINYPROXY),
    server("privoxy", ["privoxy"], ["privoxy", "--no-daemon", "$run/conf"], behind="nginx",
           conf=PRIVOXY),
]}

HTTP = "http://127.0.0.1:$http/upd/"
HTTPS = "https://localhost:$https/upd/"
BEHIND = "http://localhost:$behind_http/upd/"
BEHIND_HTTPS = "https://localhost:$behind_https/upd/"
PROXY = "127.0.0.1:$http"

ROWS = [Row(name, "http", HTTP) for name in
        ("nginx", "apache", "lighttpd", "caddy", "haproxy", "h2o", "busybox", "python", "varnish")]
ROWS += [Row(name, "https", HTTPS) for name in
         ("nginx", "apache", "lighttpd", "caddy", "haproxy", "h2o")]
ROWS += [Row("nginx", f"certificate: {kind}", HTTPS, "no-connection", certificate=kind,
             report="certificate of the update server")
         for kind in ("expired", "early", "name", "unknown", "self", "incomplete")]
ROWS += [Row("nginx", f"redirect {status}", f"http://127.0.0.1:$http/{status}/")
         for status in (301, 302, 303, 307, 308)]
ROWS += [
    Row("nginx", "redirect to https", "http://localhost:$http/to-https/"),
    Row("nginx", "redirect on https", "https://localhost:$https/308/"),
    Row("nginx", "redirect to http", "https://localhost:$https/to-http/", "no-connection",
        report="redirects from a secure address"),
    Row("nginx", "redirect in a circle", "http://127.0.0.1:$http/circle/", "no-connection"),
    Row("nginx", "gzip on", "http://127.0.0.1:$http/gzip/"),
    Row("nginx", "limit of requests with a burst", "http://127.0.0.1:$http/patient/"),
    Row("lighttpd-plain", "a type that it does not know", HTTP),
]
for proxy in ("squid", "tinyproxy", "privoxy"):
    ROWS += [Row(proxy, "http through it", BEHIND, proxy=PROXY),
             Row(proxy, "https through it", BEHIND_HTTPS, proxy=PROXY)]
ROWS += [
    Row("squid-logon", "http, no logon", BEHIND, "no-connection", proxy=PROXY,
        report="proxy server wants a logon"),
    Row("squid-logon", "https, no logon", BEHIND_HTTPS, "no-connection", proxy=PROXY,
        report="proxy server wants a logon"),
    Row("squid-logon", "http, with the logon in the settings", BEHIND,
        proxy="http://$user:$password@" + PROXY),
    Row("squid-logon", "https, with the logon in the settings", BEHIND_HTTPS,
        proxy="http://$user:$password@" + PROXY),
]
