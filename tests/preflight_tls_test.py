#!/usr/bin/env python3
"""Asks orvane-config preflight about TLS files made by openssl: preflight_tls_test.py TOOL..."""
import base64, json, os, re, resource, shlex, ssl, stat, subprocess, sys, tempfile, unittest
from pathlib import Path

from preflight_tables import check_sound, compare, rows

TOOL = sys.argv[1:]
del sys.argv[1:]
HERE = not TOOL[-1].endswith(".exe")
KEY, CHAIN, DH = "--x509-private-key", "--x509-cert-chain", "--ssl-tmp-dh-param"
GOOD = {"--https": "www.example.org:9943", KEY: "server.key", CHAIN: "full.pem"}
ROWS = rows("preflight_tls.txt")
SECRET = "correct horse battery staple"

# What clients would get, by the ciphers and protocols.
VIEWS = {
    "ECDHE+AES128:AES128-SHA --ssl-protocols TLSv1.2": [
        "TLSv1.2: ECDHE-RSA-AES128-GCM-SHA256, ECDHE-RSA-AES128-SHA256, ECDHE-RSA-AES128-SHA, AES128-SHA (weak)", "groups: P-384",
        "a current browser gets TLSv1.2, ECDHE-RSA-AES128-GCM-SHA256", "OpenSSL 1.0.2 gets TLSv1.2, ECDHE-RSA-AES128-GCM-SHA256",
        "Java 8 gets TLSv1.2, ECDHE-RSA-AES128-SHA256"],
    "ECDHE-RSA-CHACHA20-POLY1305": [
        "TLSv1.2: ECDHE-RSA-CHACHA20-POLY1305", "TLSv1.3: TLS_AES_256_GCM_SHA384, TLS_CHACHA20_POLY1305_SHA256, TLS_AES_128_GCM_SHA256",
        "groups: P-384", "a current browser gets TLSv1.3, TLS_AES_128_GCM_SHA256", "OpenSSL 1.0.2 cannot connect: no shared cipher",
        "Java 8 cannot connect: no shared cipher"],
    "ECDHE-RSA-AES128-SHA:@SECLEVEL=0 --ssl-protocols TLSv1.2 --ssl-tmp-ec-param P-192": [
        "TLSv1.2: ECDHE-RSA-AES128-SHA", "groups: P-192 (weak)", "a current browser cannot connect: no shared cipher",
        "OpenSSL 1.0.2 cannot connect: no shared cipher", "Java 8 cannot connect: no shared cipher"],
    "AECDH-NULL-SHA:@SECLEVEL=0 --ssl-protocols 'TLSv1 TLSv1.1'": [
        "TLSv1.0 (weak): AECDH-NULL-SHA (open)", "TLSv1.1 (weak): AECDH-NULL-SHA (open)", "a current browser cannot connect: unsupported protocol",
        "OpenSSL 1.0.2 cannot connect: no shared cipher", "Java 8 cannot connect: no shared cipher"],
}

# How the files are made that the table names.
AUTHORITIES = r"""
for one in root inter forged; do $NEW_KEY -out $one.key; done
openssl ecparam -name prime256v1 -genkey -noout -out server.key
openssl req -x509 -key root.key -subj /CN=root -days 99 -out root.pem
openssl req -x509 -key inter.key -subj /CN=inter -days 99 -CA root.pem -CAkey root.key -addext subjectKeyIdentifier=01 -out inter.pem
openssl req -x509 -key forged.key -subj /CN=inter -days 99 -CA root.pem -CAkey root.key -addext subjectKeyIdentifier=01 -out forged-inter.pem
openssl req -new -key server.key -subj /CN=server -out server.csr
openssl req -new -key inter.key -subj /CN=inter -out inter.csr
openssl x509 -req -in server.csr -CA inter.pem -CAkey inter.key -days 99 -extfile server.ext -out server.pem
cat server.pem inter.pem root.pem >full.pem
"""
RECIPES = r"""
openssl x509 -in server.pem -outform DER -out server.der
openssl pkey -in server.key -outform DER -out server.key.der
openssl pkcs12 -export -in server.pem -inkey server.key -passout pass: -out server.p12
openssl crl2pkcs7 -nocrl -certfile full.pem -out server.p7b
openssl pkcs8 -topk8 -in server.key -passout file:right.phrase -out locked.key
openssl pkcs8 -topk8 -v1 PBE-SHA1-RC4-128 -provider legacy -provider default -in server.key -passout file:right.phrase -out legacy.key
openssl ec -in server.key -aes128 -passout file:right.phrase -out old-locked.key
openssl genpkey -genparam -algorithm DH -pkeyopt group:ffdhe2048 -out dh.pem
openssl dhparam -dsaparam -out weak-dh.pem 1024
openssl genpkey -algorithm ED25519 -out ed.key
openssl req -x509 -days 99 -key ed.key -subj /CN=ed -addext $SAN -out ed.pem
openssl genrsa -traditional -out small.key 2047
openssl req -x509 -days 99 -key small.key -sha1 -subj /CN=small -addext $SAN -CA root.pem -CAkey root.key -out small.pem
openssl ecparam -name secp256k1 -genkey -noout -out koblitz.key
openssl req -x509 -days 99 -key koblitz.key -subj /CN=k -addext $SAN -out koblitz.pem
openssl x509 -req -in server.csr -CA root.pem -CAkey root.key -days 29 -extfile san.ext -out soon.pem
openssl x509 -req -in server.csr -CA root.pem -CAkey root.key -days 31 -extfile san.ext -out later.pem
openssl x509 -req -in server.csr -CA root.pem -CAkey root.key -days 99 -extfile five.ext -out five.pem
openssl x509 -req -in inter.csr -CA root.pem -CAkey root.key -days -1 -extfile inter.ext -out expired-inter.pem
openssl req -x509 -days 99 -key root.key -sha1 -subj /CN=root -out sha1-root.pem
openssl req -x509 -days 99 -key root.key -subj /O=$LONG/OU=$LONG/CN=root -out long-root.pem
openssl x509 -req -in server.csr -CA long-root.pem -CAkey root.key -days 99 -extfile san.ext -out long.pem
openssl req -x509 -days 99 -key root.key -subj / -out unnamed-root.pem
openssl x509 -req -in server.csr -CA unnamed-root.pem -CAkey root.key -days 99 -extfile san.ext -out unnamed.pem
openssl x509 -in server.pem -addtrust serverAuth -trustout -out trusted.pem
openssl pkcs8 -topk8 -in server.key -passout "pass:$(cat two-lines.phrase)" -out two-lines.key
openssl genrsa -out rsa.key 2048
openssl req -x509 -days 99 -key rsa.key -subj /CN=www.example.org -out rsa.pem
openssl x509 -req -in server.csr -CA rsa.pem -CAkey rsa.key -days 99 -md5 -extfile seven.ext -out seven.pem
for curve in secp384r1 secp521r1; do
openssl ecparam -name $curve -genkey -noout -out $curve.key
openssl req -x509 -days 99 -key $curve.key -subj /CN=k -addext $SAN -out $curve.pem
done
openssl x509 -req -in server.csr -CA root.pem -CAkey root.key -days -1 -extfile san.ext -out expired.pem
openssl x509 -req -in server.csr -CA root.pem -CAkey root.key -days 99 -out nameless.pem
openssl x509 -req -in server.csr -CA root.pem -CAkey root.key -days 99 -extfile client.ext -out client.pem
openssl ca -config ca.conf -batch -notext -startdate 20900101000000Z -enddate 20910101000000Z -in server.csr -out early.pem
openssl ca -config ca.conf -gencrl -crldays 9 -out crl.pem
openssl ca -config ca.conf -gencrl -crl_lastupdate 20200101000000Z -crl_nextupdate 20200201000000Z -out old-crl.pem
ssh-keygen -q -t ecdsa -N "" -f ssh.key
"""
TEXTS = {
    "right.phrase": SECRET + "\n", "wrong.phrase": "wrong\n", "raw.phrase": SECRET, "windows.phrase": SECRET + "\r\n",
    "san.ext": "subjectAltName=DNS:www.example.org\n", "client.ext": "subjectAltName=DNS:www.example.org\nextendedKeyUsage=clientAuth\n",
    "server.ext": "subjectAltName=DNS:www.example.org\nbasicConstraints=CA:FALSE\n"
                  "authorityInfoAccess=OCSP;URI:http://ocsp.example.org,caIssuers;URI:http://ca.example.org/inter\n",
    "five.ext": "subjectAltName=email:x@example.org," + ",".join(f"DNS:{one}.example.org" for one in "abcde") + "\n",
    "seven.ext": "subjectAltName=" + ",".join(f"DNS:{one}.example.org" for one in "abcdefg") + "\n",
    "inter.ext": "basicConstraints=CA:TRUE\nsubjectKeyIdentifier=01\n", "two-lines.phrase": "one\ntwo", "open.phrase": SECRET + "\n",
    "java.jks": "\u00fe\u00ed\u00fe\u00ed rubbish", "jceks.jks": "\u00ce\u00ce\u00ce\u00ce rubbish", "putty.ppk": "PuTTY-User-Key-File-3: rubbish\n",
    "ca.conf": "[ca]\ndefault_ca=d\n[d]\ndatabase=index\nserial=serial\nnew_certs_dir=.\ncertificate=root.pem\nprivate_key=root.key\n"
               "default_md=sha256\npolicy=p\nx509_extensions=x\n[p]\ncommonName=supplied\n[x]\nsubjectAltName=DNS:www.example.org\n",
    "index": "", "serial": "01\n", "empty.pem": " \t\r\n", "garbage.pem": "rubbish " * 99,
}
# Files put together from others.
JOINED = {
    "full.pem": "server inter root", "short.pem": "server inter", "alone.pem": "server", "swapped.pem": "server root inter",
    "reversed.pem": "root inter server", "gap.pem": "server root", "forged.pem": "server forged-inter root", "twice.pem": "server inter root server",
    "soon-full.pem": "soon root", "expired-full.pem": "expired root", "early-full.pem": "early root", "nameless-full.pem": "nameless root",
    "client-full.pem": "client root", "small-full.pem": "small root", "ca.pem": "root inter", "ca-crl.pem": "root crl",
    "ca-old-crl.pem": "root old-crl", "ca-half.pem": "root expired inter early server", "ca-other-crl.pem": "root inter crl", "later-full.pem": "later root",
    "five-full.pem": "five sha1-root", "seven-full.pem": "seven rsa", "expired-inter-full.pem": "server expired-inter root",
    "double.pem": "server server inter root", "stranger.pem": "server small inter", "long-alone.pem": "long", "unnamed-alone.pem": "unnamed",
    "trusted-full.pem": "trusted inter root",
}


def der(tag, *parts):
    body = b"".join(parts)
    return bytes([tag]) + (bytes([len(body)]) if len(body) < 128 else bytes([0x82]) + len(body).to_bytes(2, "big")) + body


def endless_key():
    """An encrypted key that takes two thousand million rounds to open."""
    oid = lambda text: der(6, bytes.fromhex(text))
    pbkdf2 = der(0x30, oid("2a864886f70d01050c"), der(0x30, der(4, b"8 bytes."), der(2, bytes.fromhex("7fffffff"))))
    pbes2 = der(0x30, oid("2a864886f70d01050d"), der(0x30, pbkdf2, der(0x30, oid("608648016503040102"), der(4, bytes(16)))))
    return pem("ENCRYPTED PRIVATE KEY", der(0x30, pbes2, der(4, bytes(160))))


def dh_parameters(modulus):
    return pem("DH PARAMETERS", der(0x30, der(2, modulus.to_bytes(modulus.bit_length() // 8 + 1, "big")), der(2, b"\2")))


def pem(label, data):
    return f"-----BEGIN {label}-----\n{base64.encodebytes(data).decode()}-----END {label}-----\n"


def make(where, recipes):
    # Wine refuses the signatures on a curve that are a byte shorter than others, one in about a hundred.
    new_key = "openssl ecparam -name prime256v1 -genkey -noout" if HERE else "openssl genrsa"
    subprocess.run("set -e\n" + recipes, shell=True, cwd=where, check=True, capture_output=True,
                   env=os.environ | {"NEW_KEY": new_key, "SAN": "subjectAltName=DNS:www.example.org", "LONG": "x" * 60})


# A wrong file, the words that come before the printed command, and the file that the command makes right.
CONVERTED = [
    (CHAIN, "server.der", "certificate in DER", "server.der.pem"), (KEY, "server.key.der", "key in DER", "server.key.der.pem"),
    (CHAIN, "server.p7b", "PKCS#7", "server.p7b.pem"), (CHAIN, "server.p12", "PKCS#12", "server.p12.pem"),
    (CHAIN, "utf16.pem", "UTF-16", "utf16.pem.pem"), (CHAIN, "escaped.pem", "written as", "escaped.pem"),
    (CHAIN, "indent ed.pem", "indented", "indent ed.pem"), (DH, "weak-dh.pem", "only", "weak-dh.pem"),
    (KEY, "exposed.key", "every user", "exposed.key"), (KEY, "ssh.key", "key for SSH", "ssh.key"),
    (KEY, "legacy.key", "no longer supports", "legacy.key.pem"),
]


def without_dropped(given):
    """Without the flags that have a - for a value."""
    dropped = [i for i, word in enumerate(given) if word == "-"]
    return [word for i, word in enumerate(given) if i not in dropped and i + 1 not in dropped]


def with_fine_joined(findings):
    """One finding for all flags with which nothing is wrong, so that it is compared."""
    fine = [one["flag"][2:] for one in findings if one["id"] == "tls-ok"]
    joined = [{"id": "tls-ok", "flag": " ".join(fine), "severity": "", "what": "usable", "advice": ""}]
    return [one for one in findings if one["id"] != "tls-ok"] + joined * bool(fine)


# Windows has no sockets; it does not open keys that are encrypted as long ago, nor compare keys on Edwards curves.
NOT_ON_WINDOWS = re.compile(r"none\.key|socket|kmsg|old-locked\.key --x509-pass|\bed\.key")
LOOKED_AT = {"x509-private-key", "x509-passphrase", "x509-cert-chain", "x509-ca-file-store"}
ON_ANY_FLAG = {"certificate-host", "https-without-certificate", "tls-file-missing", "size-limit"}


def as_on_windows(line):
    """What Windows says of it; empty: nothing."""
    *flags, kind = line.partition(":")[0].split()
    if kind == "tls-ok":
        flags = [flag for flag in flags if flag in LOOKED_AT]
        return " ".join([*flags, line[line.index("tls-ok"):]]) if flags else ""
    is_there = flags[0] in LOOKED_AT or kind in ON_ANY_FLAG
    line = re.sub(r"chmod o= (.*)", r"icacls \1 /inheritance:d /remove:g *S-1-1-0", line)
    return re.sub(r"Convert (it|them): (iconv|sed).*|Remove the spaces: .*", "Correct the file in an editor, and save it as plain text.", line) * is_there


class Tls(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.where = Path(cls.folder.name)
        cls.where.chmod(0o755)
        for name, text in TEXTS.items():
            (cls.where / name).write_text(text, encoding="latin-1")
        cls.secrets = [SECRET]
        cls.make_files()

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    @classmethod
    def make_files(cls):
        where = cls.where
        make(where, AUTHORITIES + RECIPES)
        for name, parts in JOINED.items():
            (where / name).write_text("".join((where / f"{part}.pem").read_text() for part in parts.split()))
        key, full = (where / "server.key").read_text(), (where / "full.pem").read_text()
        made = {
            "exposed.key": key, "with-key.pem": full + key, "cut.pem": full[:1000], "endless.key": endless_key(),
            "prime-dh.pem": dh_parameters(2**2203 - 1), "product-dh.pem": dh_parameters((2**1279 - 1) ** 2),
            "odd.pem": pem("CERTIFICATE", b"rubbish"), "odd.key": pem("PRIVATE KEY", b"rubbish"), "odd-dh.pem": pem("DH PARAMETERS", b"rubbish"),
            "second-odd.pem": (where / "server.pem").read_text() + pem("CERTIFICATE", b"rubbish"), "old.pem": full.replace(" CERT", " X509 CERT"),
            "dsa.key": pem("DSA PRIVATE KEY", b"rubbish"), "odd-dhx.pem": pem("X9.42 DH PARAMETERS", b"rubbish"),
            "public.pem": pem("PUBLIC KEY", b"rubbish"), "rsa-public.pem": pem("RSA PUBLIC KEY", b"rubbish"), "what.pem": pem("WHAT", b"rubbish"),
            "new.csr": (where / "server.csr").read_text().replace(" CERT", " NEW CERT"), "tab.pem": full.replace("-----B", "\t-----B"),
            "escaped.pem": full.replace("\n", "\\n"), "indent ed.pem": full.replace("-----B", "  -----B"),
        }
        for name, text in made.items():
            (where / name).write_text(text)
        (where / "utf16.pem").write_text(full, encoding="utf-16")
        (where / "utf16be.pem").write_bytes("\ufeffrubbish".encode("utf-16-be"))
        (where / "bom.pem").write_text(full, encoding="utf-8-sig")
        os.mkfifo(where / "pipe")
        os.mknod(where / "socket", stat.S_IFSOCK)
        (where / "loop").symlink_to("loop")
        (where / "dangling").symlink_to("nowhere")
        with open(where / "sparse", "wb") as file:
            file.truncate(1 << 30)
        for file in [*where.glob("*.key"), *where.glob("*.phrase"), where / "empty.pem"]:
            file.chmod(0o600)
        for name in ["exposed.key", "with-key.pem", "open.phrase"]:
            (where / name).chmod(0o644)
        for file in where.glob("*.key"):
            cls.secrets += [line for line in file.read_text().splitlines() if len(line) > 20 and line[0] != "-"]

    def ask(self, given, *options, user=(), env={}):
        """The exit code, what is found (without what is fine), and all texts."""
        flags = []
        for flag, value in GOOD.items():
            flags += [] if flag in given else [flag, value]
        words = [*TOOL, "preflight", "--only", "tls,security", *options, "--auto-deploy-root", "D", *flags, *without_dropped(given)]
        done = subprocess.run([*user, *words], capture_output=True, text=True, cwd=self.where, timeout=60, check=False,
                              env=os.environ | {"LANG": "C"} | env)
        for secret in self.secrets:
            self.assertNotIn(secret, done.stdout + done.stderr)
        return done

    def findings(self, given, **more):
        done = self.ask(given, "--format", "json", **more)
        answer = json.loads(done.stdout)
        check_sound(self, done.returncode, answer)
        return answer["findings"]

    def found(self, given, **more):
        findings = self.findings(given, **more)
        texts = "\n".join(one["what"] + "\n" + one["advice"] for one in findings)
        return {f"{one['id']} {one.get('flag')}" for one in findings if one["severity"] != "ok"}, texts

    @unittest.skipUnless(HERE, "as far as Windows reads files: the next test")
    def test_each_fault_is_found_and_no_other(self):
        for given, expected in ROWS:
            with self.subTest(given):
                words = shlex.split(given.replace("$PWD", str(self.where.resolve())))
                compare(self, with_fine_joined(self.findings(words)), expected, words, PWD=str(self.where.resolve()))

    @unittest.skipIf(HERE, "this build looks at everything")
    def test_windows_finds_the_same_in_keys_and_certificates(self):
        rows_there = [(given, expected) for given, expected in ROWS if not NOT_ON_WINDOWS.search(given)]
        self.assertGreater(len(rows_there), 60)
        for given, expected in rows_there:
            with self.subTest(given):
                words, here = shlex.split(given), [line for line in map(as_on_windows, expected) if line]
                found = self.findings(words)
                offer = [one for one in found if one.get("flag") == "--https" and one["severity"] in ("blocking", "unknown")]
                self.assertNotEqual(offer, [], "what is offered is not looked at, and this is said")
                found = with_fine_joined([one for one in found if one["id"] != "not-looked-at"])
                if len(here) < len(expected):  # what is wrong elsewhere keeps others from being called usable
                    here, found = [line for line in here if " tls-ok:" not in line], [one for one in found if one["id"] != "tls-ok"]
                compare(self, found, here, words)

    @unittest.skipUnless(HERE, "this build does not look")
    def test_it_shows_what_clients_would_get(self):
        line = "--https localhost:1 --x509-private-key rsa.key --x509-cert-chain rsa.pem --ssl-tmp-ec-param secp384r1 --ssl-ciphers"
        for offer, expected in VIEWS.items():
            given = shlex.split(f"{line} {offer}")
            said = [one["what"] for one in json.loads(self.ask(given, "--security", "--format", "json").stdout)["findings"] if one["id"] == "client-view"]
            self.assertEqual(said, expected, offer)

    @unittest.skipUnless(HERE, "this build does not look")
    def test_the_printed_command_converts_the_file(self):
        for flag, wrong, words, right in CONVERTED:
            with self.subTest(wrong):
                phrase = ["--x509-passphrase", "right.phrase"] * (wrong == "legacy.key")
                _, text = self.found([flag, wrong, *phrase])
                self.assertTrue(re.search(words, text, re.S), text)
                command = re.search(r": ((openssl|iconv|sed|chmod|ssh-keygen) .*)", text)
                self.assertTrue(command, text)
                more = {"ssh.key": " -N ''", "legacy.key": " -passin file:right.phrase -passout 'pass:" + SECRET + "'",
                        "server.p12": " -passin pass: -noenc"}.get(wrong, "")
                subprocess.run(command[1] + more, shell=True, cwd=self.where, check=True, capture_output=True)
                left = {one.split()[0] for one in self.found([flag, right, *phrase])[0]}
                self.assertLessEqual(left, {"chain-incomplete", "key-mismatch"} if wrong.startswith(("server.", "ssh")) else set())

    @unittest.skipUnless(HERE, "this build does not look")
    def test_what_this_user_and_this_system_lack(self):
        store = "--x509-use-system-store"
        compare(self, self.findings([store], env={"SSL_CERT_FILE": "pipe", "SSL_CERT_DIR": "/none"}), [
            "x509-use-system-store system-store-missing: there are no certificates in pipe or /none > On Debian, run: apt-get install ca-certificates"], [])
        (self.where / "store").mkdir()
        make(self.where, "cp root.pem store/$(openssl x509 -noout -hash -in root.pem).0")
        for place in [{"SSL_CERT_FILE": "root.pem"}, {"SSL_CERT_DIR": "store"}]:
            self.assertEqual(self.found([store, CHAIN, "short.pem"], env=place)[0], set())
        crl = [store, "--x509-use-crl", *"--ssl-verify-peer-mode verify-peer-require-peer-cert".split()]
        (self.where / "store/0123abcd.r0x").touch()
        self.assertEqual(self.found(crl, env={"SSL_CERT_DIR": "store"})[0], {"revocation-list --x509-use-crl"})
        (self.where / "store/0123abcd.r0").touch()
        self.assertEqual(self.found(crl, env={"SSL_CERT_DIR": "store"})[0], set())
        (self.where / "server.key").chmod(0o000 if os.geteuid() else 0o600)
        user = [] if os.geteuid() else ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]
        ids, text = self.found([], user=user)
        (self.where / "server.key").chmod(0o600)
        self.assertEqual(ids, {f"tls-file-unreadable {KEY}"}, text)
        self.assertIn("cannot read the file: Permission denied\nGive the server's user the right to read it", text)

    @unittest.skipUnless(HERE, "this build does not look")
    def test_the_warning_before_a_certificate_expires_comes_as_many_days_before_as_one_likes(self):
        for days, chain, warned in [("28", "soon-full.pem", False), ("32", "later-full.pem", True)]:
            with self.subTest(days):
                said = self.ask([CHAIN, chain], "--expires", days).stdout
                self.assertEqual("[certificate-expires-soon]" in said, warned, said)

    @unittest.skipUnless(HERE, "this build does not look")
    def test_four_times_the_authorities_take_about_four_times_as_long(self):
        der, took = ssl.PEM_cert_to_DER_cert((self.where / "root.pem").read_text()), []
        for size in [3000, 12000]:
            (self.where / "many.pem").write_text("".join(pem("CERTIFICATE", der.replace(b"root", b"%04x" % i)) for i in range(size)))
            before = resource.getrusage(resource.RUSAGE_CHILDREN)
            self.assertNotEqual(self.found(["--x509-ca-file-store", "many.pem"])[1], "")
            after = resource.getrusage(resource.RUSAGE_CHILDREN)
            took.append(after.ru_utime - before.ru_utime)  # of the processor: other programs do not count
        self.assertLess(took[1] / took[0], 7)

    def test_text_says_the_same(self):
        done = self.ask([KEY, "none.key", CHAIN, "garbage.pem", "--x509-passphrase", SECRET * 10])
        self.assertEqual(done.returncode, 8, done.stderr)
        self.assertRegex(done.stdout, "(?s)tls-file-missing.*" + ("tls-file-content" if HERE else "not looked at in this build"))

    @unittest.skipIf(HERE, "this build looks at everything")
    def test_what_no_run_can_look_at_does_not_keep_the_server_from_starting(self):
        unknown, refused = "not looked at before the start: ", "\nnot ready: "
        for key, code, said in [("server.key", 0, unknown), ("none.key", 8, refused), ("full.pem", 8, refused), ("root.key", 8, refused),
                                ("locked.key", 8, refused), ("locked.key --x509-passphrase right.phrase", 0, unknown)]:
            flags = [word for pair in (GOOD | {KEY: key}).items() for word in shlex.split(" ".join(pair))]
            with self.subTest(key):
                done = subprocess.run([*TOOL, "exec", "--preflight", "--only", "tls", "--auto-deploy-root", "D", *flags, "--", TOOL[-1], "convert"],
                                      capture_output=True, text=True, cwd=self.where, timeout=60, check=False)
                self.assertIn(said, done.stderr)
                self.assertEqual((done.returncode, f"--x509-private-key {key}" in done.stdout.replace("\n", " ")), (code, code == 0), done.stderr)


unittest.main()
