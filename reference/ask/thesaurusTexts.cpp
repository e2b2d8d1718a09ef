#include "reference/ask/thesaurusTexts.hpp"

namespace reference::ask {
namespace {

// Words that documentation and its readers exchange for one another: each means what any other of
// its line does. A word may stand in several lines.
constexpr std::string_view exchanged = R"(
delete remove drop erase discard clear unlink rid
strip trim remove
convert turn transform change cast
parse read interpret decode
make create build generate construct produce
get fetch retrieve obtain
find search locate look seek detect lookup query
check test verify validate determine
run execute launch spawn invoke
start begin launch
stop end finish terminate kill cancel abort
pause sleep wait suspend delay block
capture collect record catch
catch handle suppress ignore
print display show output write
write save store dump export serialize persist
read load open import
join merge combine concatenate concat unite stack
split divide break partition separate chop hold
sort order arrange rank
reverse backwards flip invert
group aggregate bucket bin
loop iterate iteration traverse walk
repeat duplicate replicate tile
copy duplicate clone
move rename
replace substitute swap exchange
plug substitute insert
insert add append put attach
compress zip gzip deflate archive pack
decompress extract unpack unzip inflate
compare difference diff
choose select pick filter
keep preserve retain
fill impute pad
cut truncate clip limit
measure time benchmark profile
compute calculate evaluate
normalize standardize rescale scale squeeze
rotate turn spin
chain pipeline compose sequence
mix confuse confusion misclassify
arrange order ordering permutation permute
combination combine subset
transpose swap pivot
round truncate
encode dummy indicator categorical
decay exponential weighted
mock fake stub patch
cache memoize remember
encrypt cipher
translate convert map
register hook callback handler
inherit subclass derive
annotate type hint
inspect examine introspect
pass forward delegate
expand multiply
collect gather
schedule plan timer
resize reshape
label annotate tag
skip ignore omit
estimate approximate
fit train learn
predict forecast estimate
tune optimize search try
optimize minimize maximize
simplify reduce
draw plot chart figure visualize view graph
resample sample draw
call invoke
listen watch monitor observe
send transmit post
receive accept
download fetch retrieve url
enumerate list number
flatten ravel unnest explode
pivot reshape unstack
stack pile
shuffle permute random
escape quote
align justify
wrap fold
folder directory
text string
word token
char character letter
picture image photo
program process command executable application subprocess
shell terminal console
table dataframe frame
row record line
column field variable feature
cell value entry
element item entry member
list array sequence vector
dictionary dict mapping map
pair tuple
key index label
number numeric digit
integer int
float decimal real
boolean bool truth
path route
graph network
node vertex vertices
edge link connection arc
tree hierarchy
heap priority
queue fifo
file document
spreadsheet excel xlsx sheet workbook
database sql
web internet http url
address url uri
server service
email mail message
socket connection
thread concurrent parallel
parallel concurrent simultaneous multiprocessing
coroutine async asynchronous awaitable task
lock mutex semaphore
error exception failure
warning alert
argument parameter option
function callable routine
attribute property field
formula expression equation
polynomial poly
root zero
integral area quadrature
derivative gradient slope differentiate
matrix matrices
picture plot figure
signal waveform
time duration period interval elapsed timestamp
hour hourly day daily month monthly frequency
utc timezone
latex tex
markup html xml
recurrence recursion recursive
subfolder subdirectory directory recursively
sparse zeros
huge large big
blob object feature region
ratio percent percentage relative change
binary bytes
endian byte order
equation equal solve
limit bound constraint
outcome result
test trial hypothesis
curve line
surface area
corner vertex
circle round disk
angle rotation
page document
setting option configuration config
client request
stream pipe
stdin input
stdout output
stderr error
locale language
money currency
bit binary
dimension axis
diagonal trace
norm length magnitude
rank order
bag multiset counter
interpreter python
hyperlink link url
login authenticate authentication
host hostname
environment env environ
exit quit leave
crash fault
decorator wrapper decorate
generator iterator yield
abstract interface protocol
enum enumeration
bytes buffer bytearray
hex hexadecimal
encoding charset codec unicode
indent dedent indentation
difference delta
glob wildcard
symlink symbolic
permission mode access
struct structure record
background daemon
infinity inf infinite
complex imaginary
modulo remainder mod
factorize factor factorization decompose decomposition
primality prime
exponent power exponential
logarithm log
inverse invert inv reciprocal
determinant det
eigenvalue eigenvector eig
interpolate interpolation interp
smooth filter blur
convolve convolution
fourier fft spectrum
peak maximum extremum
differential ode
substitute subs
regression fit
lag shift lead offset
melt unpivot
top head first
bottom tail last
downsample resample
traceback stack exception
breakpoint debug debugger
unit test assert
clock timer counter
date day datetime
weekday day
timezone tz
calendar month
password secret credential
token key secret
hash digest checksum fingerprint
memory ram bytes storage
size length len
count number frequency occurrence amount tally
version release
user person account
group cluster segment
category class label target
fold split cross validation
anomaly outlier novelty abnormal
pattern regex regular expression
whitespace space blank
newline line
prefix begin start
suffix end
quantile percentile quartile
median middle
percent percentage pct
proportion ratio fraction share percentage
average mean
sum total add
spread deviation variance dispersion
probability chance likelihood
correlation association dependence
similarity similar resemblance alike close fuzzy approximate
distance metric
noise disturbance
neighbor nearest closest
model estimator
score accuracy metric
weight coefficient
hyperparameter parameter
missing null nan na absent
random pseudorandom stochastic
reproducible deterministic seed
typical average
periodic regular repeated
secure unguessable cryptographic strong safe
temporary scratch temp tmp
unique distinct different
equal same identical equivalent
duplicate repeated same
maximum max largest biggest greatest highest
minimum min smallest lowest least
short shortest cheap cheapest minimum
long longest maximum
consecutive successive adjacent previous
cumulative running accumulate
rolling moving sliding window
nested recursive recursively deep tree
entire whole everything complete full
empty blank none
upper uppercase capital
lower lowercase
sorted ordered
readable human pretty
balanced stratified
exhaustive grid brute all
normal gaussian
symmetric hermitian
fast quick efficient
several multiple many
shared common
current now today
external outside foreign
descending reverse decreasing
ascending increasing
irreducible prime
)";

// A word that people type, and what documentation says in its place.
constexpr std::string_view words = R"(
tally: count counter frequency occurrence
folder: directory dir
dir: directory folder
directory: folder dir
subfolder: subdirectory recursive
subdirectory: recursive walk folder
guess: estimate predict infer detect
scramble: shuffle permute
jumble: shuffle permute
wobble: jitter noise perturb
jitter: noise perturb random
glue: join concatenate paste
chop: split truncate slice strip
nap: sleep pause
spit: print write output
yesterday: date timedelta day
tomorrow: date timedelta day
throw: raise exception discard
discard: drop remove ignore
drop: remove delete discard
toss: discard drop remove
ditch: drop remove discard
rid: remove drop delete strip
erase: delete remove clear unlink
wipe: clear erase delete reset
delete: remove unlink erase drop
remove: delete drop discard erase unlink
clear: reset empty erase remove
empty: clear blank null
blank: whitespace missing empty space nan
kill: terminate signal abort cancel
stop: terminate halt cancel quit abort
quit: exit terminate close
exit: quit terminate atexit
end: finish endswith terminate suffix tail last
finish: complete end done finalize
halt: stop terminate abort
abort: terminate cancel
cancel: abort stop
die: exit terminate kill
begin: start startswith init prefix
start: begin startswith launch prefix spawn init
launch: start spawn execute run
spawn: fork exec launch process
fire: emit trigger dispatch
trigger: emit fire invoke signal
emit: signal fire dispatch
raise: throw exception
run: execute exec invoke launch
exec: execute run
invoke: call execute
call: invoke apply
ran: execute run elapsed
bigger: greater larger maximum
biggest: max maximum largest argmax nlargest
largest: max maximum nlargest biggest
highest: max maximum largest top
greatest: max maximum largest
smaller: less minimum lower
smallest: min minimum nsmallest least
lowest: min minimum smallest
least: min minimum smallest
max: maximum largest
min: minimum smallest
maximum: max largest upper
minimum: min smallest lower
longest: max length maximum
shortest: minimum dijkstra minimal path
length: len size count
len: length size
long: length len duration
size: length dimension shape count
shape: dimension size geometry
dimensions: shape ndim axis size
width: horizontal columns size
height: vertical rows size
average: mean avg
avg: average mean
mean: average
typical: median mean mode
middle: median center midpoint
halfway: midpoint median center
spread: variance std deviation iqr dispersion
variance: var dispersion
variation: variance deviation difference
scatter: dispersion plot points
total: sum aggregate cumulative
add: sum append insert plus
sum: add total accumulate
plus: add sum
subtract: difference sub minus
minus: subtract difference sub
multiply: mul product times
mul: multiply product
product: multiply prod
divide: quotient division div split
division: divide divisor quotient modulo div multiple
div: divide division quotient
remainder: mod modulo fmod modulus divmod
modulo: mod remainder fmod
modulus: mod remainder
leftover: remainder rest
power: pow exponent exponentiation
exponent: pow exp power
pow: power exponent
root: sqrt superuser zero
logarithm: log ln
floor: round lower largest
ceiling: round smallest
decimals: digits fixed precision places
fraction: rational numerator denominator ratio
ratio: quotient proportion fraction
percent: percentage pct ratio
percentage: pct percent proportion
pct: percent percentage
proportion: fraction ratio percentage
chance: probability random likelihood
likelihood: probability loglik logpdf
probability: likelihood density distribution
dice: random randint uniform
coin: binomial bernoulli random
lottery: random sample choice
random: rand rng randint shuffle
rand: random
pick: choose select choice sample
choose: select comb choice binomial pick
choice: select pick sample
select: choose choice pick filter subset query
shuffle: permute random
sample: draw subset choice
draw: sample paint painter render canvas plot
reproducible: seed deterministic state
deterministic: seed reproducible
seed: random generator state
noise: gaussian random perturb
sort: order rank ascending arrange
order: sort rank sequence
arrange: sort permutation order layout
rank: order sort position score
descending: reverse decreasing
ascending: increasing sorted
backwards: reverse previous
reverse: invert backwards flip
flip: reverse mirror invert transpose
mirror: flip reflect
upside: flip invert
rotate: turn quaternion roll angle
turn: convert rotate transform
swap: exchange interchange swapcase
exchange: swap replace
switch: toggle change swap
toggle: switch invert check
change: modify diff replace delta modifications update
alter: modify change
modify: change update edit alter
tweak: adjust modify tune
adjust: modify scale fit correct
edit: modify change
update: modify refresh upgrade
refresh: update reload redraw
reload: refresh import reread
redo: undo repeat retry
undo: revert restore rollback
revert: restore undo rollback
restore: reset revert recover
rollback: revert transaction undo
commit: transaction save
replace: substitute sub swap
substitute: replace sub template
convert: transform cast translate
conversion: convert cast transform
transform: convert map apply
cast: convert coerce astype
coerce: convert cast
become: convert transform
make: create build construct
create: make new construct
build: construct compile make
construct: create build
generate: create iterator produce yield make
produce: generate yield create
compose: combine chain
assemble: join combine construct
join: concatenate merge combine
concat: concatenate join append
concatenate: join append concat
combine: merge combos comb join subsets binomial
merge: join combine union
mix: blend combine merge
blend: mix composite alpha
fuse: merge combine join
attach: append connect bind
append: add concatenate extend
stick: append attach join
tack: append
prepend: insert prefix appendleft unshift
insert: add put
put: insert store write
place: position insert put
push: append add enqueue
pop: remove last dequeue
enqueue: push put queue
dequeue: pop queue
deque: queue double
fetch: retrieve download request
retrieve: fetch read
obtain: retrieve fetch
grab: retrieve fetch capture acquire
pull: fetch retrieve extract
extract: retrieve unpack parse
unzip: extract decompress zipfile
unpack: extract unzip decompress
untar: extract tarfile
zip: archive compress zipfile
tar: archive tarfile
tarball: tar archive tarfile
gz: gzip compress
gzip: compress gz zlib
compress: zlib gzip deflate pack
decompress: inflate unzip expand
inflate: decompress zlib
shrink: reduce resize compress truncate
squeeze: compress singleton remove dimension
compact: compress reduce
reduce: fold accumulate decrease
fold: reduce kfold accumulate split
accumulate: cumulative sum reduce
cumulative: cumsum cumprod accumulate
archive: zip tar compress
expand: extend unfold decompress
enlarge: resize scale expand
grow: extend increase resize
increase: increment grow add
increment: increase add step
decrease: decrement reduce
decrement: decrease
extend: append expand add
lengthen: extend pad
pad: fill ljust rjust margin zfill
margin: padding spacing border
fill: pad fillna populate
truncate: trunc cut shorten trim
trunc: truncate integer
shorten: truncate abbreviate ellipsis elide
abbreviate: shorten truncate ellipsis
trim: strip whitespace truncate
strip: trim remove
cut: slice split truncate clip
slice: subset range substring
chunk: block batched split
batch: chunk group minibatch
piece: part chunk split segment token
portion: part fraction slice subset
part: portion segment component
segment: section label watershed split part
split: separate divide partition tokenize
separate: split delimiter partition sep
break: split interrupt
partition: split divide
halve: split divide half
half: divide midpoint
quarter: quartile period
crop: clip slice cut
clip: clamp limit crop
clamp: clip limit bound
limit: bound asymptotic clamp maximum restrict
bound: limit bbox range extent constraint rectangle
restrict: limit constrain filter
cap: clip uppercase limit upper maximum
capitalize: uppercase title upper
uppercase: upper toupper capital
lowercase: lower tolower casefold
upper: uppercase
lower: lowercase
casing: casefold upper lower
letter: character alphabet alpha ascii_letters
character: char letter
char: character
string: str text
str: string text
text: string str
sentence: text tokenize string
word: token text vocabulary split
paragraph: text wrap
linebreak: newline line
newline: linesep splitlines eol line
line: row readlines splitlines
whitespace: space blank isspace
indent: dedent
unindent: dedent
wrap: textwrap wrapper enclose
wrapper: decorator wraps
quote: escape shlex
escape: quote encode special
unescape: unquote decode
punctuation: ispunct characters
accent: diacritic normalize unicode unicodedata
umlaut: diacritic unicode normalize
emoji: unicode codepoint
unicode: codepoint utf encoding
codepoint: unicode ord chr
encoding: codec charset convert utf
charset: encoding codec
decode: codec convert
ascii: character ord
garbled: encoding decode
gibberish: encoding decode mojibake
typo: distance difflib similar matches
misspelled: distance similar matches
fuzzy: approximate similar ratio
resemble: similar distance
similar: distance closest cosine score matches
alike: similar equal
equal: same equivalent compare
identical: equal same
differ: diff compare unequal subtract distinct delta
diff: difference delta compare
compare: difference cmp equal
comparison: compare operator
contrast: enhance difference
include: contain
substring: find slice contains
occurrence: count find index findall
appear: occur style occurrence look show count
frequent: common mode count
frequency: count freq occurrence
freq: frequency
popular: common frequent mode
common: frequent intersection shared
shared: common shared_ptr mutual shm intersection
overlap: intersect
intersect: common
disjoint: intersection
unique: distinct duplicates uniq
distinct: unique nunique
duplicate: repeated unique copy drop_duplicates
dedupe: unique duplicates
repeated: duplicate times tile replicate
replicate: repeat copy tile
clone: copy duplicate
copy: clone duplicate deepcopy
deepcopy: copy recursive
alias: name symlink
rename: move name
move: rename shift transfer
relocate: move
shift: move offset lag roll
offset: shift displacement position
slide: shift rolling window slider
delay: sleep wait timeout defer
postpone: delay defer schedule
defer: delay postpone
pause: sleep suspend wait
wait: sleep join block
sleep: delay suspend pause
suspend: pause sleep stop
resume: continue restart
continue: resume proceed
hang: block deadlock timeout
stuck: deadlock block timeout
freeze: block suspend frozen immutable
frozen: immutable freeze
timeout: deadline expire wait
deadline: timeout expire
expire: timeout
stopwatch: elapsed timer perf_counter
elapsed: duration timer perf_counter monotonic
duration: elapsed timedelta interval
timer: interval timeout schedule
clock: time monotonic perf_counter
alarm: timer signal schedule
reminder: timer schedule
schedule: timer queue
periodically: interval timer frequency
countdown: timer timeout
benchmark: timeit profile perf_counter
fast: performance speed efficient
speed: performance velocity rate
slow: profile performance
bottleneck: profile cprofile
profile: statistics performance
latency: delay duration time
now: today current
current: now present active
today: current date now
date: datetime day date_range calendar
datetime: date time timestamp
timestamp: datetime epoch time
epoch: timestamp unix mktime
weekday: dayofweek business isoweekday busday day
monday: weekday dayofweek
sunday: weekday dayofweek
weekend: weekday business
workdays: business busday
holiday: calendar business busday
calendar: date month
month: calendar offset monthrange period relativedelta
week: isocalendar timedelta weekday
year: leap annual
yearly: annual resample freq
daily: resample day freq
hourly: resample hour freq
monthly: resample month period
midnight: time date normalize
noon: time hour
hours: timedelta time
minutes: timedelta seconds
seconds: timedelta total_seconds duration
millisecond: msec ms
microseconds: usec
nanosecond: ns nsec
age: timedelta difference date
birthday: date timedelta
ago: timedelta subtract past
later: timedelta after future
future: promise asynchronous result
promise: future asynchronous then
timezone: tz tzinfo zoneinfo utc
tz: timezone tzinfo
utc: timezone gmtime
gmt: utc gmtime
dst: daylight saving timezone
daylight: dst timezone
interval: range period timedelta
range: interval arange linspace
span: range interval extent
extent: range bounds size
evenly: linspace uniform spaced
sequence: list series iterable
list: array sequence listdir
array: ndarray vector list
vector: array resize
tuple: immutable sequence
dict: dictionary mapping
dictionary: dict mapping
map: dict project dictionary
hashmap: unordered_map dict map
hashtable: hash map dict
lookup: find search index
key: index mapping names
pair: tuple zip couple combinations items
pairwise: distance combinations pair
couple: pair tuple
stack: lifo push pop
queue: fifo deque
fifo: queue pipe
lifo: stack
heap: priority heapq heapify
priority: heap queue heapq
unordered: hash
nested: recursive flatten embed hierarchical
flatten: ravel chain nested
flat: flatten ravel
unwrap: unpack extract phase
group: groupby cluster
cluster: kmeans group dbscan labels
bucket: bin group histogram cut
bin: histogram bucket discretize intervals digitize cut
histogram: hist bins frequency
category: categorical labels levels
label: name category annotation
tag: label element
element: item member
item: element entry
entry: item element record
member: element attributes inspect
loop: iterate foreach
iterate: loop maxiter next steps generator traverse
traverse: walk visit iterate
visit: traverse walk
walk: traverse recursive
crawl: walk traverse
enumerate: index enum count list
infinite: endless cycle count isinf inf
endless: infinite cycle
forever: infinite loop cycle
cycle: repeat loop circular
circular: cycle cyclic ring
lazy: iterator generator deferred
lazily: iterator generator
next: following adjacent successor iterator
previous: prev preceding lag
preceding: previous before
following: next after
neighbor: nearest adjacent kneighbors
neighbour: nearest adjacent neighbor kneighbors
adjacent: neighbor consecutive
consecutive: successive adjacent diff
successive: consecutive pairwise
nearest: closest neighbor
closest: nearest minimum matches
near: close nearest isclose
nearly: approximately close isclose
approximately: isclose estimate allclose almost
almost: approximately isclose close
roughly: approximate estimate
close: shut release destroy
shut: close shutdown
shutdown: close terminate
open: fopen load
load: read parse import deserialize open
read: load parse input
write: save output dump
save: write dump store export
store: save write put
export: save write to_csv
import: load module read
dump: save serialize write
print: output display write
output: print write stdout
display: show print render
show: display print visible
hide: invisible visible conceal
hidden: visible invisible hide
visible: show hide shown
look: search appearance find
find: search locate lookup
search: find bisect lookup
locate: find position path search coordinates
position: index location offset
index: position idx indices subscript
idx: index
indices: index positions argwhere
row: record line axis
column: field col series axis
field: column attribute member
record: row capture struct
table: dataframe tabulate grid
spreadsheet: excel table worksheet
excel: xlsx read_excel spreadsheet
csv: delimiter comma reader
dataframe: frame table
frame: dataframe window
pivot: reshape unstack pivot_table crosstab
reshape: shape pivot melt
unpivot: melt stack
wide: pivot unstack columns
crosstab: contingency pivot
transpose: swapaxes permute
missing: nan null na none
nan: missing null isnan
null: none missing nil nan
nil: null none
none: null missing
na: missing nan null
impute: fill missing
gaps: missing spacing fill interval interpolate
invalid: error bad nan
filter: select butter where iir query fir
exclude: omit skip drop filter
skip: ignore omit exclude
ignore: skip suppress
suppress: ignore silence
silence: suppress mute ignore
mute: silence volume
omit: skip exclude drop
keep: retain preserve filter
retain: keep preserve
preserve: keep retain
condition: predicate where
criteria: condition predicate filter
criterion: condition predicate
satisfy: predicate condition
meets: predicate condition satisfies
match: regex pattern search
regex: regular pattern re
regexp: regex regular pattern
pattern: regex glob match
wildcard: glob fnmatch pattern
glob: wildcard pattern fnmatch
asterisk: wildcard glob
placeholder: template format substitute
template: substitute placeholder format
format: sprintf printf strftime style
printf: format print
pretty: pprint format indent
prettify: pprint format indent
beautify: format pprint pretty
ugly: pprint format
align: ljust rjust justify
justify: ljust rjust align
center: centre middle align
centre: center middle
left: ljust start
prefix: startswith begin
suffix: extension endswith
extension: suffix splitext ext
ext: extension suffix
filename: basename listdir file glob name paths
basename: filename
path: pathname filepath
filepath: path pathname
absolute: abspath resolve
relative: relpath relative_to
parent: dirname ancestor
child: subprocess descendant
children: child descendants
ancestor: parent superclass
sibling: neighbor adjacent
shortcut: symlink accelerator
symlink: symbolic link readlink
hardlink: link
link: symlink hyperlink href anchor url
exist: access isfile
permission: chmod mode access
owner: chown uid user
ownership: chown owner
readonly: permission immutable chmod
writable: permission access write
binary: bytes executable
bytes: buffer octet bytearray binary
buffer: bytes memory cache
flush: sync drain fsync write
sync: fsync synchronize flush
synchronize: sync lock barrier
temporary: tempfile tmp temp
temp: temporary tempfile tmp
tmp: temporary temp
scratch: temporary tempfile
metadata: stat attributes info
info: information metadata
information: info metadata
details: info description information
describe: summary description statistics
summary: describe summarize statistics
summarize: summary describe aggregate
aggregate: agg groupby summary
agg: aggregate
disk: filesystem storage
drive: disk mount volume
mount: filesystem volume
filesystem: disk file mount
storage: disk store memory
usage: rusage help statistics consumption
consumption: usage memory
memory: mem malloc ram
ram: memory
mem: memory
allocate: malloc new
deallocate: free release
free: release deallocate
release: free unlock
garbage: gc collector
gc: garbage collect
leak: tracemalloc unclosed memory gc
refcount: reference getrefcount
pointer: ptr address reference
ptr: pointer
reference: ref pointer
weakref: weak reference
cache: lru memoize
memoize: cache lru_cache
remember: cache store memoize
forget: discard clear
hash: digest checksum sha
checksum: hash crc digest
md5: hash digest
sha256: hash digest
fingerprint: hash digest
digest: hash checksum
crc: checksum
encrypt: cipher crypto
decrypt: cipher decipher
cipher: encrypt decrypt
cryptography: crypto cipher
secret: token hmac
password: getpass secrets passphrase credentials scrypt pbkdf2
salt: hash pbkdf2 scrypt
sign: signature signum copysign
signature: sign inspect verify
verify: validate check signature
certificate: x509 cert ssl
cert: certificate
ssl: tls secure certificate
tls: ssl secure
secure: ssl secrets tls
https: ssl tls
token: secrets split lexer
login: user authentication auth
authenticate: auth credentials
auth: authentication
credentials: authentication password
user: username uid login
username: user login getpass
uuid: unique identifier guid
guid: uuid unique
id: identifier
identifier: id name
process: subprocess pid
pid: process getpid
subprocess: process popen child
program: executable process command
application: app program
app: application
command: cmd subprocess shell
shell: command subprocess system
console: terminal tty stdout
tty: terminal isatty
prompt: input question
keyboard: key input press
stdin: input standard
stdout: output standard
stderr: error standard
redirect: dup pipe stdout
pipe: fifo stream
pipeline: chain pipe steps
argument: parameter args argv
args: arguments
argv: arguments command
parameter: param argument
params: parameters
option: argument flag
flag: option switch bits boolean
setting: option config preference
preferences: config options
config: configuration configparser
configuration: config
cfg: config configuration
ini: configparser config
toml: config parse
yaml: safe_load dump
json: parse stringify dumps
xml: etree element parse
html: parser markup
markup: html xml
parse: parser decode
parser: parse
interpret: parse evaluate
evaluate: eval compute
eval: evaluate expression
compute: calculate evaluate
calculate: compute evaluate arithmetic
formula: expression equation
expression: expr formula
expr: expression
equation: solve eq system linsolve
solve: solution solver root
solver: solve
unknown: variable symbol solve
simplify: reduce simplification
factor: factorint divisors decomposition primes
divisor: gcd factors divisible
multiple: lcm several range
prime: isprime primality primerange sieve
factorial: gamma product
fibonacci: sequence recurrence
even: parity modulo
integer: int integral whole
int: integer
whole: integer entire
float: double
double: float twice multiply
number: numeric integer digits
numeric: number
digit: isdigit numeric decimal
precision: accuracy decimal digits
accuracy: precision score
accurate: precision exact fsum
exact: fraction decimal precise
infinity: inf isinf
inf: infinity
finite: isfinite
negative: minus negate sign
nonzero: zero count
zero: null fill
ones: fill array
bitwise: xor
xor: exclusive bitwise
bitmask: mask bits flags
mask: boolean hide bitmask filter
boolean: bool logical true
bool: boolean
logical: boolean bool
hexadecimal: hex base16
hex: hexadecimal
octal: oct base
oct: octal
base64: b64encode encode
roman: numerals
endian: byteorder byteswap
complex: imaginary real
imaginary: imag complex
conjugate: conj complex
conj: conjugate
phase: angle argument
angle: atan2 radians degrees
degrees: radians angle
radians: degrees angle
trigonometry: sin cos tan
sine: sin
cosine: cos
tangent: tan
arctangent: atan arctan
arcsine: asin
arccosine: acos arccos
hypotenuse: hypot
constant: const fixed
euler: exp constant
matrix: matrices array
matrices: matrix
determinant: det
det: determinant
inverse: inv invert
inv: inverse
invert: inverse reverse
singular: svd
eigenvalue: eig eigvals eigh
eigenvector: eig
eig: eigenvalues eigenvectors
svd: singular decomposition
decompose: decomposition factorization
decomposition: factorization svd qr
cholesky: decomposition factorization
diagonal: diag trace
diag: diagonal
triangular: tril triu
eye: identity
orthogonal: qr orth
perpendicular: orthogonal normal cross
norm: magnitude length distance
magnitude: norm abs absolute
dot: inner product
inner: dot product
outer: product
cross: product
kronecker: kron
sparse: csr coo
dense: toarray todense
symmetric: hermitian eigh
derivative: gradient diff jacobian differentiate
differentiate: derivative ode diff
gradient: derivative shading grad
slope: gradient linregress derivative
steepness: slope gradient
jacobian: derivative
hessian: derivative second
integral: quad quadrature
quadrature: integrate quad
antiderivative: integrate
ode: solve_ivp odeint differential
optimum: optimize minimize
optimal: minimize best
optimise: minimize optimize
minimize: optimize minimum
minimise: minimize optimize
maximize: minimize optimize maximum
maximise: minimize optimize
constraint: bounds
best: optimal maximum highest
worst: lowest maximum
fit: estimate regression curve_fit
trend: polyfit detrend regression
trendline: polyfit linregress
polynomial: poly polyfit
poly: polynomial
quadratic: polynomial roots
interpolate: interp spline
inbetween: interpolate
extrapolate: predict fill_value
spline: bspline interpolate
smooth: filter savgol spline
bumpy: smooth noise
spectrum: fft periodogram psd
fourier: fft transform
fft: fourier
signal: waveform sigaction handlers
wave: sinusoid waveform sine
waveform: signal wave
spike: peak outlier find_peaks
peak: maximum find_peaks maxima
valley: minimum argrelmin
bump: peak
lowpass: filter butter
convolve: convolution filter
convolution: convolve conv
correlate: corr corrcoef
corr: correlation
covariance: cov
cov: covariance
relationship: correlation association
dependence: requirement correlation topological
downsample: resample decimate
upsample: resample interpolate
resample: downsample bootstrap upsample permutation
resolution: dpi resample
image: picture pixmap imread
picture: image pixmap
photo: image picture
pixel: pixmap image
resize: scale rescale
scale: rescale resize zoom
zoom: scale magnify
magnify: zoom scale
thumbnail: resize image
blur: gaussian filter smooth
blurry: blur sharpen
sharpen: unsharp filter
brightness: enhance intensity exposure
darken: darker brightness
lighten: lighter brightness
grayscale: gray grey rgb2gray
greyscale: gray rgb2gray
gray: grayscale grey
grey: gray grayscale
edges: canny link border sobel side
outline: contour boundary edge
contour: outline boundary
boundary: border edge
border: edge boundary frame
threshold: otsu binarize
erode: erosion morphology
dilate: morphology
blob: label connected regionprops
geometry: shape polygon
polygon: shape vertices
circle: ellipse radius arc
oval: ellipse
rectangle: rect box
rect: rectangle
triangle: triangulation delaunay
area: surface region
surface: area
volume: capacity loudness
distance: dist norm metric
dist: distance
far: distance
point: coordinate position vertices
coordinate: position point coords
hull: convex
enclosing: bounding hull
inside: contains within interior
within: inside between
outside: exterior
between: range interval
grid: mesh meshgrid
mesh: grid
graph: network plots nodes
network: graph socket
node: vertex vertices
vertex: node
tree: hierarchy
hierarchy: tree hierarchical
route: path shortest
connected: components open socket attach
statistics: mean variance summary
deviation: std dev variance
std: deviation standard
stdev: std deviation
median: quantile middle
quantile: percentile quartile ppf
percentile: quantile scoreatpercentile ppf
quartile: quantile percentile iqr
mode: frequent common
skewed: asymmetry shear
lopsided: skewness asymmetry
outlier: anomaly zscore robust isolation
anomaly: outlier novelty
unusual: outlier anomaly
abnormal: outlier anomaly
distribution: pdf cdf density
density: pdf kde
pdf: density probability
cdf: cumulative distribution
gaussian: normal
bell: gaussian normal beep
uniform: random rectangular
bootstrap: resample
confidence: interval conf
significance: pvalue test
hypothesis: test pvalue
pvalue: significance test
ttest: student test
survey: sample proportion
experiment: design test
regression: linregress ols linear
predict: forecast estimate
forecast: predict arima smoothing
residual: resid error
ols: least squares regression
overfit: regularization penalty dropout validation
penalty: regularization alpha
train: fit
learn: fit train
model: estimator predictor
classifier: classification estimator predict
classification: classifier predict
spam: classifier naive bayes
forest: randomforest ensemble trees
boosting: gradient ensemble
ensemble: bagging voting stacking
vote: majority
majority: mode vote
features: columns predictors attributes
predictors: features exog
preprocess: transformer
standardize: scaler zscore scale
rescale: minmax scale normalize
onehot: dummies encoder
dummy: indicator onehot
kmeans: clustering centroids
centroid: center mean
hyperparameters: gridsearch grid tuning search
tune: gridsearch search optimize hyperparameter
validation: check kfold verify
holdout: train_test_split
confusion: matrix metrics
score: metric points evaluate accuracy
metric: score distance
recall: sensitivity score
roc: auc curve
auc: roc area
loss: error cost
cost: loss
error: exception err failures errno
err: error
exception: error raise
crash: traceback faulthandler abort core segfault
fail: error failure raise
failure: error fail
bug: debug error
debug: debugger breakpoint pdb
debugger: pdb breakpoint
breakpoint: debugger pdb
traceback: stack backtrace
backtrace: traceback stack
stacktrace: traceback backtrace
catch: except handle
handle: handler descriptor
handler: callback handle
problem: error issue
complain: warn
warn: filterwarnings
message: msg notification
msg: message
logger: logging
verbose: level
assert: check
check: verify validate test
ensure: guarantee assert
guarantee: ensure
test: unittest check testcase
unittest: test testcase
mock: stub patch fake
fake: mock stub
stub: mock fake
pretend: mock fake
monkeypatch: patch mock
fixture: setup teardown
setup: initialize fixture
teardown: cleanup
cleanup: finalize atexit teardown
init: initialize constructor
initialize: init
initialise: init initialize
constructor: init
destructor: finalizer destroy
destroy: free delete destructor
introspect: inspect reflection
reflection: inspect introspection
inspect: examine introspection
examine: inspect
type: kind typeof dtype
typeof: type instanceof
kind: type
instance: isinstance
subclass: derived issubclass inherit
superclass: base super
inherit: base derived subclass
abstract: abc base
decorator: wraps wrapper
method: bound members
callback: handler listener
listener: handler bind observer accept callback
subscribe: listener observer connect
observer: listener watcher
watch: monitor inotify observe
monitor: watch observe screen
notify: signal emit notification
notification: notify alert
alert: notification warning dialog
slot: signal connect
event: signal handler
closure: partial nested
curry: partial bind
partial: bind curry
bind: partial connect
anonymous: lambda
lambda: anonymous
recursion: nested walk rglob depth
permutation: rearrangement
combos: combinations product
subset: select combinations issubset powerset sample
powerset: subsets
cartesian: product
union: merge combine
thread: pthread concurrency
concurrent: parallel threads gather executor
parallel: concurrent multiprocessing pool
simultaneously: concurrent parallel
multithreaded: threads pool
lock: mutex acquire flock
unlock: release mutex
mutex: lock
semaphore: lock
race: atomic lock
atomic: lock synchronized
async: asyncio asynchronous await
asynchronous: async nonblocking
await: async coroutine
coroutine: async await
nonblocking: asynchronous
blocking: wait synchronous
background: daemon bg thread async
daemon: background service
service: server daemon
worker: thread pool executor processes
pool: executor workers
channel: pipe queue
socket: connect recv
server: listen serve host
client: connect
host: hostname address
hostname: gethostname host
ip: address inet ipaddress
port: socket
dns: resolve getaddrinfo hostname
resolve: dns lookup absolute
disconnect: close detach
send: write transmit post
sent: send transmitted write
transmit: send
receive: recv read
recv: receive
packet: datagram udp
udp: datagram
tcp: stream socket
download: urlretrieve fetch retrieve
upload: post put stor
url: uri link urlparse
uri: url
website: url http webbrowser
webpage: html url http
browser: webbrowser url
web: http url
internet: network http inet
query: querystring sql search
querystring: query urlencode parse
cookie: session
request: http req
response: reply answer
answer: response result
reply: response
respond: response reply
post: request submit
submit: post send
form: multipart urlencoded
email: mail smtp message
mail: email smtp
inbox: imap mailbox
mailbox: imap email
smtp: mail
ftp: transfer file
proxy: tunnel
api: interface request
ping: reachable connect
database: db sqlite sql
db: database
sql: query database
sqlite: database
cursor: pointer
transaction: commit rollback
serialize: pickle dump marshal
serialise: pickle serialize dump
deserialize: load unpickle parse
pickle: serialize dump
unpickle: load deserialize
persist: save store pickle shelve
language: locale translation
locale: language i18n translate
internationalization: i18n gettext locale
i18n: internationalization gettext
currency: monetary locale
money: currency decimal monetary
commas: thousands delimiter separator
sep: separator delimiter
delimiter: separator sep
semicolon: delimiter separator
tab: tabulator expandtabs notebook
plot: chart graph figure
chart: plot graph
figure: plot canvas
diagram: plot graph chart
visualize: plot display
paint: draw painter
painter: draw paint
brush: fill painter
pen: stroke line
stroke: outline pen
canvas: drawing figure
axis: axes dimension
axes: axis subplot
legend: label
caption: title label
title: heading suptitle
annotate: text arrow
arrow: quiver annotate
bars: barplot barh histogram column
pie: wedge chart
boxplot: box whisker
whiskers: boxplot
heatmap: imshow pcolormesh
subplot: axes panel grid figure
panels: subplots facets
marker: symbol point
dashed: linestyle
thickness: linewidth width
thicker: linewidth bold
color: colour palette colormap
colour: color palette
palette: colormap colors
colormap: cmap palette
cmap: colormap
colorbar: colormap scale
transparent: alpha opacity translucent
opacity: alpha transparency
opaque: opacity alpha
fade: opacity alpha animation
shade: fill gradient
animate: transition frames
font: typeface families fontsize
bold: weight font
italic: style font oblique
underline: decoration font
window: toplevel widget rolling frame
popup: dialog menu tooltip
dialog: messagebox modal
dialogue: dialog messagebox
modal: dialog blocking
widget: control
control: widget
button: click widget
click: pressed activated mouse signal
press: key clicked
mouse: pointer cursor
hover: enter tooltip mouse
hint: tooltip placeholder suggestion
tooltip: hint tip
textbox: entry lineedit text
input: read stdin entry
dropdown: combobox optionmenu
combobox: dropdown
checkbox: checkbutton toggle
slider: scale scrollbar range
spinner: spinbox progress
progressbar: progress
progress: progressbar percentage
scroll: scrollbar viewport
scrollbar: scroll adjustment
menu: popup action
toolbar: tools action
statusbar: status message
sidebar: dock panel
layout: arrange box grid
stretch: expand resize scale
fullscreen: maximize screen
iconify: minimize
icon: pixmap image
focus: activate grab
disable: enabled insensitive state
enable: activate sensitive
clickable: enabled sensitive
highlight: select
clipboard: paste copy selection
paste: clipboard
drag: dnd drop move
draggable: drag movable
screenshot: grab capture
screen: display monitor
sound: audio play
audio: sound wav
music: audio media play
play: playback media
video: movie media
movie: video animation
camera: capture video
louder: volume
loudness: volume
microphone: audio input
iostream: stream cout
stream: stdio io readable writable
collection: container
smart: unique_ptr shared_ptr
traits: is_same type_traits
nullable: optional null
variant: union visit
constexpr: constant
rvalue: move forward
forward: perfect
module: import packages
package: module distribution
install: pip packages setup distributions metadata
version: release
compile: build
bytecode: dis compile
disassemble: dis bytecode
library: module shared dlopen
plugin: extension entry_points module
environment: env
env: environ
variable: var name
var: variable
cwd: working directory getcwd
platform: os system uname
os: platform operating
cpu: processor cpu_count core
cores: cpu_count processors
processor: cpu
hardware: machine platform
machine: platform hostname
uptime: boottime sysinfo
admin: root superuser privileges
privileges: setuid permissions
sudo: root setuid
uid: user
gid: group
interrupt: sigint signal keyboardinterrupt
segfault: sigsegv faulthandler
ctrl: sigint control modifier
orphan: zombie child
zombie: waitpid wait reap
descriptor: fd fileno
fd: descriptor
seek: lseek position rewind
rewind: seek beginning
jump: seek goto skip
tail: last end
first: head initial front
last: tail final back
final: last
front: first head
top: nlargest first highest
bottom: tail end lower
count: number counter value_counts len frequency
counter: count
opposite: inverse negate reverse
negate: neg opposite
complement: invert inverse
vowels: characters translate
palindrome: reverse
anagram: permutation sorted
plural: ngettext
alphabet: ascii_letters sort letters lexicographic
alphanumeric: isalnum
lexicographic: alphabetical order
camelcase: capitalize
slug: normalize ascii
sanitize: escape clean quote
clean: strip preprocess normalize remove
tidy: clean reshape
junk: garbage strip
stopwords: stop_words text
stemming: tokenize
lexer: tokenize scanner
vocabulary: tokens countvectorizer
ngrams: tokens vectorizer
lag: shift
growth: pct_change exponential
delta: difference change
rolling: moving window
ewma: ewm exponential
decay: exponential ewm
seasonal: decomposition decompose
weighted: average
balanced: stratified weights class_weight
imbalanced: class_weight stratify
nearby: neighbors radius nearest
radius: ball distance
surrounding: enclosing neighborhood
bbox: bounding
triangulate: delaunay
tessellation: voronoi delaunay
voronoi: tessellation
kdtree: spatial nearest
spatial: kdtree geometry
latitude: geographic coordinates
longitude: geographic coordinates
acyclic: dag
dag: acyclic directed
undirected: graph
clique: complete subgraph
community: modularity partition
centrality: betweenness pagerank
influential: centrality pagerank
hub: centrality degree
bipartite: matching
bfs: breadth
dfs: depth
dijkstra: shortest path
mst: spanning tree
subgraph: induced
maze: path
assignment: linear_sum_assignment matching
knapsack: milp integer
minima: minimum argrelmin
maxima: maximum peaks
extremum: minimum maximum
extrema: minima maxima
converge: tolerance iteration
tolerance: tol epsilon
tol: tolerance
epsilon: eps tolerance
eps: epsilon
stiff: bdf ode
symbolic: sympify variable
taylor: series
asymptote: limit
infinitesimal: limit
modular: mod residue
coprime: gcd
gcd: divisor
lcm: multiple
totient: coprime phi
binomial: comb choose
gamma: factorial
bessel: jv special
erf: gaussian
legendre: orthogonal polynomial
chebyshev: polynomial
hermite: polynomial
kernel: convolution
harmonic: fourier frequency
tone: sine frequency
pitch: frequency
chirp: sweep frequency
sweep: chirp
bandpass: filter butter
highpass: filter butter
denoise: wiener wavelet filter
noisy: noise denoise smooth
echo: print terminal
wavelet: cwt transform
spectrogram: stft
envelope: hilbert
detrend: trend remove
corner: harris vertex keypoint
texture: glcm
skeleton: thin
thin: skeletonize
warp: transform affine
distort: warp transform
shear: affine skew
tilt: rotate shear
affine: transform
perspective: homography projective
stitch: blend join
watermark: composite overlay
overlay: composite blend
collage: paste montage
exif: metadata image
jpeg: image jpg
png: image
gif: image animation
hue: hsv color
saturation: hsv color
hsv: hue colorsys
rgb: color
shadow: effect
scrape: parse html extract
spell: words matches
celsius: convert unit
inches: unit dpi convert
kilometers: unit distance convert
units: dimension convert
temperature: sensors unit
battery: power sensors
gigabytes: bytes size
megabytes: bytes size
tilde: expanduser home
dotfile: hidden
trash: delete recycle
recycle: trash reuse
unused: unlink free
reuse: cache share
alive: running is_alive poll
dead: terminated is_alive
awake: notify signal wakeup
wake: notify resume signal
poke: notify signal
nudge: shift perturb
bounce: reflect ease
vibrate: oscillation frequency
oscillate: sine periodic
wiggle: jitter oscillation
squash: flatten compress squeeze
discretize: bin cut quantize
quantize: discretize round
smear: blur spread
soften: blur smooth
sketch: draw outline
trace: traceback outline diagonal
trail: tail suffix
peek: top front lookahead
glance: peek head summary
skim: head
preview: head thumbnail display
handful: sample few
bunch: group collection bulk
bulk: batch many
pile: stack heap
pour: fill stream
drain: flush empty
plug: socket substitute
hook: callback handler intercept
intercept: hook catch coefficient
embed: nest insert
inject: insert patch
peel: strip unwrap
shave: trim strip
prune: remove filter trim
weed: filter remove
sift: filter
sieve: filter primes
purge: clear delete remove
evict: cache remove pop
eject: remove unmount
boot: start load
reboot: restart
restart: reset start
retry: backoff repeat
again: repeat reset retry
twice: duplicate double
triple: tuple three
isolated: disconnected single
standalone: independent executable
independent: uncorrelated
obey: constraint
forbid: deny disable
deny: permission reject
allow: permit enable
permit: allow permission
prohibit: disable prevent
prevent: avoid disable block
avoid: prevent skip
protect: lock guard
guard: lock protect
safe: quote atomic secure
untrusted: escape safe
tamper: hmac signature verify
obscure: hide mask
censor: mask replace
peculiar: outlier
broken: invalid corrupt
corrupt: invalid damaged crc
damaged: corrupt invalid
repair: fix recover
fix: repair correct
recover: restore repair
correct: adjust fix valid
legit: valid
mistake: error
blunder: error
unexpected: exception error
decide: choose predict
judge: evaluate score
rate: frequency speed
grade: score rank
goodness: score fit chisquare
quality: score metric
assess: evaluate score
explain: describe variance
teach: train fit
understand: parse interpret
docs: documentation docstring help
documentation: docstring doc help
docstring: doc documentation
help: documentation usage
comment: remark annotation
source: origin code
origin: source zero
destination: target dst
target: destination goal label
objective: target cost minimize
result: output outcome
outcome: result response
effect: result
affect: modify influence
influence: leverage effect
simulate: random generate sample model
imitate: mock simulate
mimic: mock simulate emulate
emulate: simulate
replay: playback repeat
speak: speech audio
hear: audio listen
beep: bell sound
ring: circular
whisper: volume
blink: flash cursor
invisible: hidden transparent
disappear: hide remove
splash: splashscreen
wallpaper: background
foreground: fg
theme: style palette
skin: style theme
style: stylesheet theme css
css: style stylesheet
stylesheet: css style
layer: z stack overlay
behind: lower below background
above: raise over upper
below: lower under
beside: adjacent horizontal
beneath: below lower
underneath: below lower
horizontally: hbox row hstack
vertically: vbox column vstack
sideways: horizontal transpose
side: edge border
perimeter: length boundary circumference
circumference: perimeter length
diameter: radius width
sphere: spherical ball
cylinder: surface
curve: path bezier spline arc
bezier: cubic curve path
bend: curve
arc: curve angle
straight: linear line
zigzag: jagged
checkerboard: grid tile
chessboard: tile corners
tile: repeat grid
leaderboard: rank sort
ties: rank method
address: location pointer addr
addr: address
country: locale region
region: area locale
foreign: locale ctypes
chinese: unicode encoding cjk
arabic: bidirectional rtl
rtl: bidirectional direction
direction: orientation angle
orientation: direction rotation
downward: descending down
velocity: derivative speed
acceleration: derivative second
diffusion: laplacian heat
candles: ohlc
interest: compound rate
loan: payment pmt
mortgage: pmt payment
compound: exponential power
terminal: tty console termios kill abort
execute: exec run invoke which binary
time: clock datetime
normal: gaussian norm scale normaltest
right: rjust
space: whitespace blank linspace
tick: xticks locator check timer
translate: gettext tr convert map
dim: dimension opacity
contain: includes collection membership
heading: title caption label
log: logarithm logger ln
odd: parity modulo
cube: power cbrt
square: power rectangle
round: nearest floor ceil rint decimals
bit: bitwise binary popcount
sub: substitute subtract
often: frequency count
attribute: attr property getattr
ringbuffer: deque circular
straighten: rotate deskew linear
headline: title header
uncheck: setchecked toggle deselect
unselect: deselect clear
sluggish: profile latency
newest: latest mtime maximum
latest: newest last maximum
oldest: minimum mtime first
earliest: minimum first
recent: last latest
fortnight: week timedelta
decade: year period
lapse: elapsed interval
)";

// Words that mean one thing together, in any order.
constexpr std::string_view phrases = R"(
greatest common divisor: gcd
common divisor: gcd
common factor: gcd
common multiple: lcm
least common multiple: lcm
standard deviation: std stdev
average spread: std variance
working directory: cwd getcwd chdir
current directory: getcwd cwd
current folder: getcwd cwd
change directory: chdir
change folder: chdir
file extension: suffix splitext ext
environment variable: getenv env
absolute value: abs fabs
command line arguments: argparse argv optparse
command line options: argparse optparse getopt
command line: argv argparse
square root: sqrt
cube root: cbrt
moving average: rolling convolve
running average: rolling expanding
running total: cumsum accumulate
running sum: cumsum accumulate
cumulative sum: cumsum accumulate
cumulative product: cumprod
time zone: tz timezone
best fit line: polyfit linregress regression
line fit: linregress polyfit
straight line: linregress polyfit linear
curve fit: curve_fit polyfit
bell curve: normal gaussian norm
home directory: expanduser homedir
home folder: expanduser homedir
temporary file: tempfile mkstemp tmpfile
temporary folder: mkdtemp tempfile tmpdir
temporary directory: mkdtemp tempfile tmpdir
make folder: mkdir makedirs
create folder: mkdir makedirs
new folder: mkdir makedirs
make directory: mkdir makedirs
create directory: mkdir makedirs
delete folder: rmtree rmdir
remove folder: rmtree rmdir
remove directory: rmtree rmdir
delete directory: rmtree rmdir
delete file: unlink remove rm
erase file: unlink remove
copy file: copyfile shutil copy2
copy folder: copytree
copy directory: copytree
move file: rename shutil
rename file: replace
list files: listdir scandir glob readdir
files folder: listdir scandir readdir
list directory: listdir scandir readdir
file exist: access isfile
folder exist: isdir
file size: getsize stat st_size
folder size: walk getsize disk_usage
disk space: disk_usage statvfs
free space: disk_usage statvfs
last modified: getmtime mtime stat
modification time: mtime getmtime stat
creation time: getctime ctime birthtime
file permissions: chmod stat umask
file owner: chown getpwuid stat
file name: basename filename
file path: abspath pathname
full path: abspath realpath absolute
relative path: relpath relative_to
absolute path: abspath realpath resolve
parent folder: dirname
parent directory: dirname
join path: joinpath
path parts: split
symbolic link: symlink readlink
soft link: symlink
all subfolders: walk rglob recursive
shell wildcard: fnmatch glob
read line: readline getline fgets
lines file: readlines
last line: tail seek
append file: open mode
binary file: struct rb bytes
file position: seek tell fseek
lock file: flock lockf fcntl
compare files: filecmp cmp
compare folders: dircmp filecmp
watch file: watcher inotify monitor
file changes: watcher inotify mtime
open file dialog: filedialog filechooser
choose file: filedialog filechooser
pick file: filedialog filechooser
save dialog: asksaveasfilename filechooser
zip file: zipfile unzip archive
compress file: gzip zlib bz2
extract archive: unpack_archive extractall
uncompress file: decompress gunzip
upper case: uppercase toupper
lower case: lowercase tolower
ignore case: casefold ignorecase strcasecmp
case insensitive: casefold ignorecase strcasecmp
capital letter: uppercase title
first letter: capitalize title
each word capital: title capwords
swap case: swapcase
leading zeros: zfill pad
pad zeros: zfill rjust format
leading whitespace: lstrip trim dedent
trailing whitespace: rstrip trim
leading spaces: lstrip dedent
trailing spaces: rstrip
trailing newline: rstrip strip
remove spaces: strip replace
extra spaces: strip split
strip whitespace: trim
remove punctuation: translate maketrans
split string: tokenize strtok partition
split words: tokenize
split lines: splitlines
split regex: re
join strings: concatenate strcat
combine strings: concatenate join
concatenate strings: strcat join
reverse string: slice
string length: strlen len
compare strings: strcmp collate
copy string: strcpy strdup
search string: strstr find index
find substring: index strstr
string contains: find includes
string starts: startswith prefix
string ends: endswith suffix
count letters: counter frequency
count words: counter countvectorizer split
count occurrences: counter value_counts
most common: counter mode most_common
most frequent: mode counter most_common
replace text: sub
search replace: sub
find replace: sub
regular expression: regex re regexp
capture group: match
named group: groupdict match
all matches: findall finditer
special characters: escape quote
string number: int str float itoa atoi format
text number: int float strtol parse
string integer: atoi int parseint strtol
string float: atof strtod
number words: format
string bytes: encode decode
string list: split join
string date: strptime strftime parse isoformat to_datetime format
text date: strptime parse
parse date: strptime to_datetime fromisoformat
format date: strftime
string json: loads dumps parse stringify
character code: ord chr codepoint
ascii code: ord chr
letter number: ord chr
unicode name: unicodedata lookup
remove accents: unicodedata normalize
wrap text: textwrap fill
long lines: textwrap wrap fill
fixed width: textwrap ljust read_fwf
text width: textwrap wcwidth metrics
insert variables string: format substitute template
string template: substitute format
multiple spaces: split sub
random string: secrets token choices
random number: randint rand uniform
random integer: randint randrange
random element: choice
random item: choice
pick random: choice sample
random sample: choice
random order: shuffle permutation
same random: seed
random seed: srand
weighted random: choices
without replacement: sample permutation
coin flip: binomial choice
dice roll: randint
normal distribution: gaussian shapiro norm normaltest gauss
secure random: secrets urandom
cryptographically secure: secrets urandom randombytes
unique identifier: uuid guid
password hash: scrypt pbkdf2 crypt
hide password: getpass
ask password: getpass
secret key: hmac
compare digest: hmac constant timing
file hash: hashlib digest checksum
public key: rsa asymmetric x509
current time: now gettimeofday
time now: clock
current date: today now
today date: now
days between: timedelta difftime diff
time between: timedelta difference difftime
time difference: timedelta difftime
date difference: timedelta subtract
add days: timedelta adddays offset
add months: relativedelta dateoffset addmonths
day week: weekday dayofweek isoweekday
week number: isocalendar weekofyear
leap year: isleap
days month: monthrange strftime days_in_month calendar
last day month: monthrange monthend is_month_end
business days: busday bdate_range
date range: date_range period_range
list dates: date_range
unix time: timestamp epoch mktime
unix timestamp: epoch fromtimestamp mktime
seconds epoch: time timestamp mktime
local time: localtime astimezone
utc time: gmtime utcnow
daylight saving: dst
convert timezone: astimezone tz_convert
iso format: isoformat fromisoformat
measure time: timeit perf_counter clock
execution time: timeit perf_counter elapsed
wait seconds: sleep
pause program: sleep
after delay: settimeout timer
later function: settimeout timer call_later
every seconds: setinterval timer interval
repeat every: setinterval timer
repeated timer: setinterval interval
cpu time: process_time clock rusage
start program: popen subprocess spawn exec
run program: popen subprocess spawn exec
run command: subprocess system popen exec
external program: subprocess popen spawn
shell command: subprocess system popen
capture output: subprocess check_output popen
command output: check_output popen exec
child process: fork subprocess waitpid
wait child: waitpid
process id: pid getpid
kill process: terminate sigkill
parent process: getppid fork
exit code: status returncode
exit status: returncode wexitstatus
exit program: quit abort
program ends: atexit exit
ctrl c: sigint keyboardinterrupt signal
keyboard interrupt: sigint signal
signal handler: sigaction
standard input: stdin
standard output: stdout
standard error: stderr
redirect output: redirect_stdout dup2 stdout
ask user: input readline prompt
user input: readline scanf stdin
user name: getlogin getuser username
current user: getuser getuid getlogin
operating system: platform uname os
computer name: hostname gethostname node
number processors: cpu_count sysconf cpus
number cpus: cpu_count sysconf
which program: executable
find executable: which path
terminal size: get_terminal_size winsize
screen size: geometry winfo
clear screen: curses
terminal color: curses ansi
key press: keypress getch
single key: getch keypress
memory usage: tracemalloc rusage getsizeof rss
memory leak: tracemalloc gc
object size: getsizeof sizeof
garbage collection: gc
reference count: getrefcount refcount
weak reference: weakref
shared memory: shm mmap shm_open
memory map: mmap
map file memory: mmap memmap
copy memory: memcpy memmove
compare memory: memcmp
fill memory: memset
allocate memory: malloc calloc
free memory: release
resize memory: realloc
config file: configparser configuration ini
configuration file: configparser ini
settings file: configparser
log file: filehandler
log message: logger
log rotation: rotatingfilehandler
stack trace: traceback backtrace
print error: perror strerror traceback
error message: strerror perror exception
error code: errno strerror
custom exception: subclass
ignore errors: suppress except
ignore exception: suppress
ignore warnings: filterwarnings simplefilter catch_warnings
hide warnings: filterwarnings simplefilter
step through: pdb debugger set_trace
slow code: profile cprofile timeit
test raises: assertraises
expected exception: assertraises raises
skip test: skipif
expected failure: xfail expectedfailure
fake object: mock magicmock
floating compare: isclose allclose
approximately equal: isclose allclose almost
close enough: isclose allclose
floating numbers equal: isclose allclose
round up: ceil
round down: floor
round decimals: quantize
decimal places: round precision format
nearest integer: rint round
nearest whole: round rint
remove decimals: trunc int floor
whole part: trunc modf integer
fractional part: modf
integer part: trunc modf
integer division: floordiv divmod floor
quotient remainder: divmod remquo
division remainder: modulo fmod mod divmod
sign number: copysign signum
raise power: pow
natural logarithm: log ln
natural log: ln
base two logarithm: log2
base ten logarithm: log10
logarithm base: log2 log10 log
scientific notation: format exponent frexp
thousands separator: format locale grouping
comma thousands: format locale grouping
binary string: bin format
number binary: bin
decimal binary: bin
number hexadecimal: hex format
decimal hexadecimal: hex
hex string: fromhex hexlify unhexlify
bytes hex: hexlify fromhex
number base: int radix base_repr
count bits: popcount bit_count bit_length
number bits: bit_length popcount bit_count
set bits: popcount bit_count
byte order: byteorder byteswap htonl ntohl
bit shift: lshift rshift
shift left: lshift
shift right: rshift
polar coordinates: rect phase
complex number: cmath
complex conjugate: conj
prime number: isprime primerange sieve
prime factors: factorint primefactors
next prime: nextprime
perfect square: isqrt
integer square root: isqrt
random prime: randprime
add numbers: sum fsum
sum list: fsum
multiply list: prod
multiply all: prod product
multiply together: prod product
multiply matrices: matmul dot
matrix multiplication: matmul dot
matrix product: matmul dot
matrix inverse: inv pinv
invert matrix: inv pinv
pseudo inverse: pinv
matrix power: matrix_power
matrix exponential: expm
matrix logarithm: logm
matrix square root: sqrtm
matrix rank: matrix_rank
identity matrix: eye
diagonal matrix: diag trace
upper triangle: triu
lower triangle: tril
linear equations: solve linsolve lstsq
simultaneous equations: solve linsolve fsolve
least squares: lstsq leastsq ols
singular value: svd
eigen values: eigvals eig
principal components: pca
dot product: inner vdot
inner product: dot
vector length: norm
vector angle: arccos dot
unit vector: normalize norm
matrix empty: zeros
array zeros: zeros_like
array ones: ones_like
evenly spaced: linspace arange
equally spaced: linspace arange
log spaced: logspace geomspace
number range: arange
area under curve: trapezoid integrate auc simpson
under curve: trapezoid integrate auc
numerical integration: quad trapezoid simpson
definite integral: quad
double integral: dblquad
numerical derivative: gradient diff
partial derivative: diff gradient jacobian
differential equation: solve_ivp odeint dsolve
ordinary differential: solve_ivp odeint dsolve
find root: brentq fsolve newton
find zero: brentq fsolve root
equation zero: brentq fsolve root_scalar
crosses zero: brentq root zero_crossings
polynomial roots: polyroots
fit polynomial: polyfit
evaluate polynomial: polyval horner
quadratic equation: roots solve
minimum function: minimize fmin
find minimum: minimize argmin fmin
find maximum: argmax maximize
lowest point: minimize argmin minimum
global minimum: basinhopping differential_evolution dual_annealing
linear programming: linprog
integer programming: milp
simulated annealing: dual_annealing
missing points: interp interpolate
between points: interp interpolate distance
values between: interp interpolate clip
fill between: interpolate fill_between
smooth curve: spline interpolate savgol
cubic spline: cubicspline splrep
smooth noisy: savgol filter gaussian
fourier transform: fft dft
inverse fourier: ifft
frequency content: fft periodogram spectrum
power spectrum: welch periodogram psd
low pass: butter lowpass
high pass: butter highpass
band pass: butter bandpass
find peaks: find_peaks argrelmax
local maxima: find_peaks argrelextrema
local maximum: find_peaks argrelextrema
sample rate: resample fs frequency
sampling frequency: resample fs
remove noise: denoise filter median
remove trend: detrend
edge detection: canny sobel
black white: grayscale binary threshold
resize image: rescale thumbnail
rotate image: transpose
flip image: fliplr flipud mirror
crop image: slice
connected regions: label regionprops
count objects: label regionprops
straight lines image: hough
detect circles: hough
histogram equalization: clahe
distance between points: cdist dist norm pdist
pairwise distance: pdist cdist
straight line distance: euclidean hypot dist
city block: manhattan cityblock
nearest neighbor: kdtree kneighbors
nearest point: kdtree query cdist
closest point: kdtree query cdist
closest value: argmin searchsorted bisect
convex hull: convexhull
point inside polygon: contains within
point polygon: contains within
shortest path: dijkstra
shortest route: dijkstra path
minimum spanning tree: mst
breadth first: bfs
depth first: dfs
topological sort: toposort
topological order: toposort graphlib
strongly connected: scc
traveling salesman: tsp
maximum flow: maxflow
graph coloring: greedy_color
page rank: pagerank
confidence interval: conf_int bootstrap
p value: pvalue test
t test: ttest_ind ttest_rel ttest_1samp
compare means: ttest_ind anova f_oneway
two groups: ttest_ind mannwhitneyu ks_2samp
analysis of variance: anova f_oneway
chi square: chi2 chisquare chi2_contingency
rank correlation: spearmanr kendalltau
correlation coefficient: corrcoef pearsonr corr
linear regression: linregress ols lstsq
logistic regression: logit
harmonic mean: hmean
geometric mean: gmean
weighted mean: average
root mean square: rms rmse
mean squared error: mse
mean absolute error: mae
interquartile range: iqr
percent change: pct_change
percentage change: pct_change
kernel density: kde gaussian_kde
probability density: pdf
cumulative distribution: cdf
inverse cumulative: ppf
monte carlo: random simulate
survival function: sf
time series: resample tsa
moving window: rolling
sliding window: rolling sliding_window_view
exponential smoothing: ewm holt
exponentially weighted: ewm
exponential moving: ewm
partial fractions: apart
common denominator: together
combine fractions: together
multiply out: expand
continued fraction: continued_fraction
trig identities: trigsimp expand_trig
missing values: isna isnull dropna fillna nan
fill missing: fillna ffill imputer
replace missing: fillna imputer
drop missing: dropna
remove missing: dropna
count missing: isna isnull
empty values: isna dropna
empty rows: dropna
forward fill: ffill
previous value: ffill shift lag
next row: shift
previous row: shift diff
rows between: slice
remove duplicates: drop_duplicates unique
duplicate rows: drop_duplicates
unique values: nunique
distinct values: unique nunique
count values: value_counts
count each: value_counts counter
number unique: nunique
number rows: shape len
first rows: head
first lines: head
last rows: tail
random rows: sample
largest values: nlargest argpartition
smallest values: nsmallest
select rows: loc iloc query
filter rows: query loc isin
rows condition: query loc where
select columns: loc filter select_dtypes
delete column: drop
remove column: drop pop
add column: assign insert
new column: assign insert
column type: astype dtype
sort by column: sort_values
sort rows: sort_values
sort dates: sort_values
group by: groupby aggregate
average per group: groupby mean
each group: groupby transform apply
join tables: merge
combine dataframes: concat merge
stack dataframes: concat
wide long: melt pivot wide_to_long unstack
pivot table: pivot_table crosstab
columns rows: transpose melt pivot stack unstack
cross tabulation: crosstab
contingency table: crosstab chi2_contingency
list rows: explode isin
split list column: explode
one hot: get_dummies onehotencoder
dummy variables: get_dummies onehotencoder
row index: reset_index iloc
reset index: reset_index
index column: set_index reset_index
loop rows: iterrows itertuples
iterate rows: iterrows itertuples
each row: apply iterrows itertuples
apply function: map
replace values: map mask where
bins ranges: cut digitize
equal bins: qcut cut
quantile bins: qcut
monthly totals: resample groupby
excel file: read_excel to_excel
csv file: read_csv reader
read table: read_csv read_table
html table: read_html to_html
database table: read_sql to_sql
column list: tolist
train test: train_test_split
cross validation: cross_val_score kfold
scale features: standardscaler minmaxscaler
feature selection: selectkbest rfe
feature importance: permutation_importance
dimension reduction: pca tsne
dimensionality reduction: pca tsne svd
reduce dimensions: pca tsne
decision tree: decisiontreeclassifier
random forest: randomforestclassifier
support vector: svm svc
naive bayes: gaussiannb multinomialnb
nearest neighbors classifier: kneighborsclassifier
neural network: mlp
k means: kmeans
group similar: cluster kmeans
hierarchical clustering: linkage agglomerative dendrogram
confusion matrix: confusion_matrix
true positive: recall roc confusion
false positive: precision roc fpr
precision recall: f1_score precision_recall_curve
grid search: gridsearchcv
hyperparameter search: gridsearchcv randomizedsearchcv
text features: tfidfvectorizer countvectorizer
term frequency: tfidf
class labels: labelencoder
category numbers: labelencoder factorize codes ordinalencoder
text categories: labelencoder ordinalencoder
polynomial features: polynomialfeatures
learning rate: lr scheduler
anomaly detection: isolationforest novelty
matrix factorization: nmf svd
bar chart: barh
bar graph: barh
line graph: plot
line chart: plot
box plot: boxplot
heat map: imshow pcolormesh
error bars: errorbar
log scale: semilogy loglog set_xscale
logarithmic axis: semilogy loglog
axis limits: xlim ylim set_xlim
axis range: xlim ylim set_xlim
axis label: xlabel ylabel
axis title: xlabel ylabel
plot title: suptitle
tick labels: xticks set_xticklabels
axis ticks: xticks locator
rotate labels: tick_params xticks
multiple plots: subplots
second axis: twinx secondary
two y axes: twinx secondary
save plot: savefig
save figure: savefig
plot image: imshow
figure size: figsize
plot text: annotate
horizontal line: axhline hlines
vertical line: axvline vlines
shaded region: axvspan fill_between
shade area: fill_between axvspan
contour plot: contourf
vector field: quiver streamplot
surface plot: plot_surface
three dimensional: 3d mplot3d
line style: linestyle dash
line width: linewidth thickness
line color: stroke
color map: colormap cmap
color scale: colorbar colormap
tight layout: tight_layout
key value: items dict map
merge dictionaries: update chainmap
combine dictionaries: update chainmap
default value: defaultdict setdefault getattr
missing key: defaultdict setdefault
dictionary sorted: ordereddict
insertion order: ordereddict
nested list: chain flatten
flatten list: chain from_iterable
both lists: intersection zip
two lists: zip merge
lists together: zip chain
parallel lists: zip
different lengths: zip_longest
index value: enumerate
sort key: itemgetter attrgetter
sort list: qsort
sort function: cmp_to_key qsort
sort array: argsort qsort
sort order index: argsort
keep sorted: bisect insort
sorted list insert: bisect insort
binary search: bisect bsearch searchsorted lower_bound
priority queue: heapq priority_queue
double ended: deque
linked list: forward_list
circular buffer: deque maxlen
first element: front shift
last element: back pop
remove first: popleft shift
remove last: pop
rotate list: roll
every nth: islice step
skip first: dropwhile islice drop
until condition: takewhile
while condition: takewhile
group consecutive: groupby
consecutive pairs: pairwise
consecutive differences: diff adjacent_difference
split chunks: batched array_split
equal parts: array_split linspace
all combinations: product
every combination: product
all pairs: combinations product
possible orderings: permutations
all orders: permutations
infinite loop: cycle count repeat
remove item: pop discard
element exists: contains find
array contains: includes isin
position maximum: argmax
index maximum: argmax idxmax
position largest: argmax
index minimum: argmin idxmin
condition index: where nonzero argwhere
join arrays: concatenate vstack hstack
stack vertically: vstack
stack horizontally: hstack
stack arrays: vstack
add dimension: expand_dims newaxis unsqueeze
extra dimension: squeeze expand_dims
array shape: reshape
array one dimension: ravel flatten
repeat array: tile
array equal: array_equal allclose
save array: savetxt savez
load array: loadtxt genfromtxt
limit range: clip clamp
keep within: clip clamp
partial function: bind
fix arguments: partial bind
remember results: cache lru_cache memoize
cache results: lru_cache memoize
function arguments: signature parameters
function name: qualname
variable number arguments: varargs va_list
function signature: inspect
source code: getsource inspect ast
syntax tree: ast parse
abstract class: abc abstractmethod
abstract method: abc abstractmethod
static method: staticmethod
class method: classmethod
read only: property frozen readonly const
getter setter: property
attribute name: getattr setattr hasattr
object attributes: vars dir getattr
class name: qualname type metaobject
object type: isinstance
type check: isinstance instanceof
only digits: isdigit
only letters: isalpha
type hint: annotation
either type: union
named tuple: namedtuple
data class: dataclass
enumerated constants: enum
context manager: contextmanager with
deep copy: deepcopy
import module name: import_module importlib
dynamic import: import_module importlib
load library: dlopen ctypes loadlibrary
shared library: dlopen ctypes
installed version: metadata
package version: metadata
build extension: setuptools
virtual environment: venv
thread pool: threadpoolexecutor executor qthreadpool
process pool: processpoolexecutor
multiple processes: multiprocessing pool processpoolexecutor
multiple threads: threadpoolexecutor
new thread: pthread_create
start thread: pthread_create
wait thread: join pthread_join
thread local: thread_local
thread safe: lock queue mutex
read write lock: rwlock shared_mutex
condition variable: notify
run background: daemon thread create_task
event loop: asyncio run_forever
several coroutines: gather taskgroup
run async: asyncio
wait all: gather join
wait first: as_completed race select
time limit: timeout wait_for alarm
share between processes: shared_memory manager shm
between processes: pipe queue ipc
between threads: queue channel
message queue: mq_open
parallel map: pool executor
ip address: inet_pton ipaddress inet_aton
domain name: getaddrinfo gethostbyname dns
host name: gethostname getaddrinfo
name address: getaddrinfo gethostbyname
open port: bind listen connect
port number: getservbyname
tcp server: listen bind createserver
tcp connection: create_connection socket
listen connections: accept bind
multiple sockets: select poll selectors epoll
several sockets: select poll selectors
socket option: setsockopt
web server: httpserver createserver
http server: httpserver createserver
web page: urlopen http html
download file: urlretrieve urlopen fetch
http request: urlopen fetch
post request: urlopen
url parts: urlparse urlsplit
parse url: urlparse urlsplit
url encode: quote urlencode encodeuricomponent
url decode: unquote parse_qs decodeuricomponent
query string: parse_qs urlencode querystring
query parameters: parse_qs urlencode searchparams
join url: urljoin
send email: smtplib sendmail
read email: imaplib
email attachment: mime multipart
html tags: htmlparser striptags
html entities: unescape escape
parse html: htmlparser lxml
parse xml: elementtree etree sax
xml element: elementtree subelement
find xml: xpath findall
pretty json: dumps indent
read json: loads parse
pretty print: pprint indent
prepared statement: execute bind
last inserted: lastrowid insert_id
sql query: execute select
save object: pickle dump
load object: pickle
binary data: struct bytes buffer
pack bytes: struct
integer bytes: to_bytes from_bytes unpack
base 64: b64encode b64decode
file type: mimetypes guess_type
mime type: mimetypes guess_type
image type: imghdr mime
character encoding: codec charset
translate string: gettext tr
plural form: ngettext
language settings: setlocale locale
text alignment: halign justify
message box: messagebox qmessagebox alert
pop up: popup dialog messagebox
popup menu: contextmenu
right click: contextmenu button
double click: doubleclick activated
mouse position: pos cursor pointer
mouse wheel: wheelevent scroll
mouse over: enter hover
drag drop: dnd mimedata
key shortcut: accelerator qshortcut
keyboard shortcut: accelerator
text box: entry lineedit textview
text field: entry lineedit textfield
drop down: combobox dropdown
check box: checkbox checkbutton
radio button: radiobutton
progress bar: progressbar
status bar: statusbar
scroll bar: scrollbar
tool tip: tooltip
tool bar: toolbar
spin box: spinbox spinbutton
tab widget: notebook qtabwidget
list box: listbox listwidget
tree view: treeview treewidget
window title: settitle setwindowtitle
window size: resize geometry setdefaultsize
window position: geometry move
window icon: iconphoto setwindowicon
resize window: geometry
close window: destroy closeevent protocol
hide window: withdraw
minimize window: iconify showminimized
full screen: fullscreen showfullscreen
always top: windowstaysontop topmost keepabove
bring front: raise lift present
main window: mainwindow toplevel
file menu: menubar
menu bar: menubar
menu item: menuitem action
grey out: disabled sensitive setenabled
background color: bg palette
text color: foreground fg
change color: palette
color picker: colorchooser colordialog
choose color: colorchooser colordialog
font size: fontsize pointsize
font chooser: fontdialog fontchooser
draw line: drawline line_to
draw circle: drawellipse arc create_oval
draw rectangle: drawrect create_rectangle
draw text: drawtext layout
draw image: drawpixmap drawimage
redraw widget: update repaint queue_draw
repaint window: update
copy clipboard: settext
scroll bottom: see ensurevisible yview scrollto
scroll top: yview scrollto
scroll item: scrollto ensurevisible
select all: selectall select_range
selected text: selectedtext
selected item: currentitem curselection
read only text: readonly editable
cursor position: textcursor mark
mouse cursor: setcursor
wait cursor: overridecursor busy
space between widgets: margin pady
password field: echomode visibility show
text changed: textchanged
button clicked: pressed
play sound: qsoundeffect player playsound beep
sound file: wave wav audio
play video: mediaplayer
file name pattern: glob fnmatch
smart pointer: unique_ptr shared_ptr
unique pointer: unique_ptr
shared pointer: shared_ptr
weak pointer: weak_ptr
hash table: unordered_map
hash map: unordered_map dict
sorted container: map multiset
dynamic array: vector
erase if: remove_if erase_if
remove elements: remove_if erase
vector remove: erase remove_if
find element: find_if
element position: distance find
first matching: find_if find next
count condition: count_if
transform elements: map
apply each: for_each map
sum vector: accumulate reduce
sort descending: greater reverse
partial sort: partial_sort nth_element
nth smallest: nth_element partition kth
kth largest: nth_element partition
keep order: stable_sort
string stream: stringstream stringio
string buffer: stringio stringstream
memory file: bytesio stringio fmemopen
same type: is_same
remove reference: remove_reference
compile time: constexpr static_assert
move ownership: unique_ptr
time point: chrono time_point
print formatted: printf sprintf
formatted string: sprintf snprintf
parse formatted: scanf sscanf
buffer size: highwatermark setvbuf
line buffering: setvbuf flush
read stream: readable pipe
write stream: writable pipe
event listener: addlistener on eventemitter
next tick: nexttick setimmediate
bytes buffer: alloc
copy buffer: slice
uncaught exception: excepthook uncaughtexception
file descriptor: fd fileno
non blocking: nonblock o_nonblock setblocking
duplicate descriptor: dup dup2
named pipe: mkfifo fifo
user id: getuid uid
group id: getgid gid
process priority: nice setpriority
resource limits: setrlimit rlimit ulimit
open files limit: rlimit_nofile
process group: setpgid killpg
core dump: rlimit_core abort
sleep microseconds: usleep nanosleep
hide typing: echo termios getpass
current locale: setlocale localeconv
check number: isnumeric isdigit
whether number: isnumeric isdigit
text numeric: isnumeric isdigit
check prime: isprime
whether prime: isprime
check callable: iscallable
check terminal: isatty
check infinite: isinf
exit handler: atexit
function exit: atexit
each line: readline getline
big file: getsize stat
many times: count occurrences counter
long took: elapsed perf_counter timeit
number ways: comb perm
end file: eof feof
number clusters: silhouette
system equations: solve linsolve fsolve
rate change: diff gradient derivative pct_change
check attribute: hasattr
yes question: askyesno messagebox
dotted line: linestyle dash
odds ratio: fisher_exact
graph edges: add_edge
spanning tree: mst
exponential growth: exp
date picker: calendar dateedit
file watcher: inotify monitor
stop thread: interrupt join quit
stop process: terminate kill
stop timer: cancel clearinterval cleartimeout
cancel timeout: cleartimeout
number string leading: zfill
undo stack: qundostack
recent files: recentmanager
system tray: qsystemtrayicon statusicon
online check: reachability
open browser: webbrowser
open website: webbrowser
default program: xdg desktopservices
two dates: timedelta difftime
dates timestamps: to_datetime
hours minutes: timedelta divmod strftime
minutes seconds: timedelta divmod
seconds hours: timedelta divmod
degrees radians: deg2rad rad2deg
binary integer: int base
text columns: loadtxt read_fwf
sum rows: axis
sum columns: axis
max column: idxmax nlargest
correlation columns: corr corrcoef
compare two lists: difflib
similar words: get_close_matches difflib
text differences: difflib unified_diff
levenshtein distance: edit ratio
edit distance: levenshtein difflib
word frequency: counter freqdist countvectorizer
common words: counter most_common
)";

constexpr std::string_view thesaurus[] = {exchanged, words, phrases};

}  // namespace

std::span<const std::string_view> thesaurusTexts() noexcept {
    return thesaurus;
}

}  // namespace reference::ask
